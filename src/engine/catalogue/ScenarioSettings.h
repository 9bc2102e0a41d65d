#pragma once

#include "CommonControllerLib/ScenarioRecords.h"

#include <string>
#include <vector>

/// The input files that a settings file (".adc") describes; element 0 is the primary one. What the file does not say is
/// empty. At most 10,000 secondary inputs are taken; the log warns of more.
std::vector<InputFileSpec> ReadScenarioInputs(const std::wstring& settingsPath);

/// The pieces of a list between its commas, not trimmed. A comma at the end adds no empty piece.
std::vector<std::wstring> SplitAtCommas(const std::wstring& list);
