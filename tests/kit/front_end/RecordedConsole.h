#pragma once

#include "front_end/terminal/Console.h"
#include "text/Text.h"

#include <functional>
#include <optional>
#include <string>

/// A console of any kind that records its output.
class RecordedConsole final : public front_end::Console {
public:
    bool isTerminal = false;
    bool hasColours = false;
    bool hasLinks = false;
    /// What the user types when asked; nothing: nobody is there.
    std::optional<std::wstring> answer;
    std::string questions;
    /// Standard input.
    std::string input;
    std::size_t width = 80;
    std::size_t height = 24;
    /// UTF-8.
    std::string output;
    std::string errors;
    /// The error of output that cannot be written.
    platform::Error outputError;
    /// Null: only a write detects that the reader has gone.
    void* readerGone = nullptr;
    /// Called after each output: the next step of the test.
    std::function<void()> onWrite;

    void Write(std::wstring_view text) override { WriteBytes(text::ToUtf8(text)); }
    void WriteBytes(std::string_view bytes) override {
        if (!outputError) {
            throw front_end::OutputFailure{outputError};
        }
        output += bytes;
        if (onWrite) {
            onWrite();
        }
    }
    void WriteError(std::wstring_view text) override { errors += text::ToUtf8(text); }
    void* ReaderGone() const override { return readerGone; }
    void BecomeTerminal(std::size_t terminalWidth, std::size_t terminalHeight) {
        isTerminal = true;
        width = terminalWidth;
        height = terminalHeight;
    }

    bool IsTerminal() const override { return isTerminal; }
    bool HasColours() const override { return hasColours; }
    void UseColours(bool use) override { hasColours = use; }
    bool HasLinks() const override { return hasLinks; }
    std::optional<std::wstring> Ask(std::wstring_view question) override {
        questions += text::ToUtf8(question);
        return answer;
    }
    platform::Error ReadInput(std::size_t most, std::string& bytes) override {
        bytes = input;
        return input.size() > most ? platform::Error{platform::ErrorKind::TooLarge} : platform::Error();
    }
    std::size_t Width() const override { return width; }
    std::size_t Height() const override { return height; }
};
