#pragma once

#include "CommonControllerLib/StringManager.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <string>

namespace controller_cli {

/// Every text that the front end shows, by its key ("Table/Job"): in the culture of the settings, else in the default
/// one, else the built-in English. One thread.
class Texts {
public:
    /// The file is read when the first text is asked for.
    explicit Texts(std::wstring stringResourceFile) : file(std::move(stringResourceFile)) {}

    /// The key itself where even the built-in texts do not have it.
    const std::wstring& Get(const std::wstring& key) const;

    /// The text with "{0}", "{1}" and so on replaced by the values. What in these could forge a line or steer a
    /// terminal is escaped: names and reports of others are among them.
    std::wstring Format(const std::wstring& key, std::initializer_list<std::wstring> values) const;

private:
    std::wstring Find(const std::wstring& key) const;

    std::wstring file;
    mutable std::optional<StringManager> strings;
    mutable std::map<std::wstring, std::wstring> found;
};

} // namespace controller_cli
