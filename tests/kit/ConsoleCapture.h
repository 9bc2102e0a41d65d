#pragma once

#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>

/// Captures output to std::wcout during its lifetime.
class ConsoleCapture {
public:
    ConsoleCapture() : console(std::wcout.rdbuf(text.rdbuf())) {}
    explicit ConsoleCapture(std::wstreambuf& buffer) : console(std::wcout.rdbuf(&buffer)) {}
    ~ConsoleCapture() { std::wcout.rdbuf(console); }
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    std::wstring Text() const { return text.str(); }

private:
    std::wostringstream text;
    std::wstreambuf* console;
};
