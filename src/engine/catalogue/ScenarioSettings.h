#pragma once

#include "CommonControllerLib/ScenarioRecords.h"

#include <string>
#include <vector>

/// Reads the input files that a settings file (".adc") describes; element 0 is the primary one. Missing values are
/// empty. Limited to 10,000 secondary inputs; more are logged as a warning.
std::vector<InputFileSpec> ReadScenarioInputs(const std::wstring& settingsPath);

/// Splits a list at its commas without trimming. A final comma adds no empty piece.
std::vector<std::wstring> SplitAtCommas(const std::wstring& list);
