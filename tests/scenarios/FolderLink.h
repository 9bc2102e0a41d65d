#pragma once

#include <string>

/// Makes a symbolic link to a folder; false where the system makes none.
bool MakeFolderLink(const std::wstring& link, const std::wstring& target);
