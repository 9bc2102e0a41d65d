#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// Texts for people, looked up by culture and key in a JSON file of string resources: one section a culture, in it
/// nested named members. A key names a text by the members on the way down, joined by "/".
///
/// Read-only after construction: any thread. Reports no failure but by its results.
class CONTROLLER_API StringManager {
public:
    /// Reads the file at once; of an unreadable one no key is found.
    explicit StringManager(const std::wstring& resourceFilePath);
    StringManager(const StringManager& other);
    StringManager(StringManager&& other) noexcept;
    StringManager& operator=(StringManager&& other) noexcept;
    ~StringManager();

    /// The culture selected in the application's settings, such as "de-DE".
    std::wstring GetCultureInfo() const;

    /// Finds the text of `key` in the first culture that has it: `culture` (unless empty), the selected one, the
    /// application's default one. An empty key names the whole section, a key of an object gives its JSON text, and a
    /// segment "#" of a key is passed over. False when no culture has it; `text` is then left as it was.
    [[nodiscard]] bool GetLocalizedString(const std::wstring& key, std::wstring& text,
                                          const std::wstring& culture) const;

private:
    [[nodiscard]] bool GetLocalizedStringImpl(const std::wstring& key, std::wstring& text,
                                              const std::wstring& culture) const;
    [[nodiscard]] bool GetStringResources(const std::wstring& json, const std::wstring& name,
                                          std::wstring& member) const;

    std::wstring resources;
};
