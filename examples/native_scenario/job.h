#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A job seen by its scenario: the files in the work directory (docs/work-directory-files.md). All texts are UTF-8.
class Job {
public:
    /// Ends the scenario because the job was asked to stop.
    struct Stopped {};

    /// Reads the run request. Throws `std::runtime_error` if it cannot be read.
    explicit Job(const std::filesystem::path& request);

    const std::vector<std::filesystem::path>& Inputs() const { return inputs; }

    /// Reports the progress; only a new percentage is written. Throws `Stopped` if the job was asked to stop.
    void Progress(int percent, const std::string& message);
    /// Adds a message to the result. Code 0 is an information.
    void AddMessage(std::string text, int code = 0) { messages.emplace_back(code, std::move(text)); }
    /// Writes a file of the results.
    void WriteOutput(const std::string& name, std::string_view bytes);
    /// Writes the result; the last call.
    void End(bool hasSucceeded);

private:
    void Replace(const char* name, std::string_view bytes) const;

    std::string id;
    std::filesystem::path workDirectory;
    std::filesystem::path outputDirectory;
    std::vector<std::filesystem::path> inputs;
    std::vector<std::pair<int, std::string>> messages;
    std::vector<std::filesystem::path> outputs;
    int reported = -1;
};

/// The text of a path, in UTF-8.
std::string TextOf(const std::filesystem::path& path);

/// The whole content of a file. Throws `std::runtime_error` with a text for people.
std::string ReadBytes(const std::filesystem::path& path);
