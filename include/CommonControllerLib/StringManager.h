#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// Texts for people, found by culture and key in a JSON file of string resources. Each culture is one section with
/// nested named members. A key is the path of member names to a text, joined by "/".
///
/// Threads: any; read-only after construction. Failures are reported only through return values.
class CONTROLLER_API StringManager {
public:
    /// Reads the file. If it cannot be read, no key is found.
    explicit StringManager(const std::wstring& resourceFilePath);
    /// Copies the resources.
    StringManager(const StringManager& other);
    /// Moves the resources.
    StringManager(StringManager&& other) noexcept;
    /// Moves the resources.
    StringManager& operator=(StringManager&& other) noexcept;
    ~StringManager();

    /// The culture selected in the application's settings, such as "de-DE".
    std::wstring GetCultureInfo() const;

    /// Finds the text of `key` in the first culture that has it: `culture` (unless empty), the selected culture, the
    /// application's default culture. An empty key names the whole section, a key of an object yields its JSON text,
    /// and a key segment "#" is skipped. Returns false, and leaves `text` unchanged, when no culture has the key.
    [[nodiscard]] bool GetLocalizedString(const std::wstring& key, std::wstring& text,
                                          const std::wstring& culture) const;

private:
    [[nodiscard]] bool GetLocalizedStringImpl(const std::wstring& key, std::wstring& text,
                                              const std::wstring& culture) const;
    [[nodiscard]] bool GetStringResources(const std::wstring& json, const std::wstring& name,
                                          std::wstring& member) const;

    std::wstring resources;
};
