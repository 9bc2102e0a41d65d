// @NAME@: lists the sizes of its input files. Say here what yours does.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

namespace fs = std::filesystem;

constexpr int failed = 1;
constexpr int stopped = 3;

/// The files of the controller are UTF-8 on all systems.
fs::path FromUtf8(const std::string& text) {
    return fs::path(std::u8string(text.begin(), text.end()));
}

std::string ToUtf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

/// Thrown when the job was asked to stop.
struct Stop {};

class Job {
public:
    explicit Job(const fs::path& requestFile) {
        std::ifstream file(requestFile, std::ios::binary);
        rapidjson::IStreamWrapper stream(file);
        rapidjson::Document request;
        request.ParseStream(stream);
        if (request.HasParseError()) {
            throw std::runtime_error("the run request cannot be read");
        }
        id = request["jobId"].GetString();
        workDirectory = FromUtf8(request["workDir"].GetString());
        outputDirectory = FromUtf8(request["outputFolder"].GetString());
        for (const auto& input : request["inputFiles"].GetArray()) {
            inputs.push_back(FromUtf8(input.GetString()));
        }
    }

    const std::vector<fs::path>& Inputs() const { return inputs; }

    /// Reports progress in percent. Throws `Stop` if the job was asked to stop.
    void Progress(int percent, const std::string& message) const {
        if (fs::exists(workDirectory / "killprocess")) {
            throw Stop();
        }
        Replace(workDirectory / "progress_info_list.json", Begin([&](auto& json) {
                    json.Key("progressInfoList");
                    json.StartArray();
                    json.StartObject();
                    json.Key("progress");
                    json.Int(percent);
                    json.Key("message");
                    json.String(message.c_str());
                    json.EndObject();
                    json.EndArray();
                }));
    }

    void WriteOutput(const std::string& name, const std::string& content) {
        fs::create_directories(outputDirectory);
        Replace(outputDirectory / FromUtf8(name), content);
        outputs.push_back(outputDirectory / FromUtf8(name));
    }

    void WriteResult(bool succeeded, const std::string& message) const {
        Replace(workDirectory / "run_scenario_result.json", Begin([&](auto& json) {
                    json.Key("succeeded");
                    json.Bool(succeeded);
                    json.Key("messages");
                    json.StartArray();
                    json.StartObject();
                    json.Key("code");
                    json.Int(succeeded ? 0 : failed);
                    json.Key("text");
                    json.String(message.c_str());
                    json.EndObject();
                    json.EndArray();
                    json.Key("outputFiles");
                    json.StartArray();
                    for (const fs::path& output : outputs) {
                        json.String(ToUtf8(output).c_str());
                    }
                    json.EndArray();
                }));
    }

private:
    /// An object with the members that all files have, and those that `addMembers` writes.
    template <typename AddMembers>
    std::string Begin(const AddMembers& addMembers) const {
        rapidjson::StringBuffer text;
        rapidjson::Writer<rapidjson::StringBuffer> json(text);
        json.StartObject();
        json.Key("version");
        json.Int(1);
        json.Key("jobId");
        json.String(id.c_str());
        addMembers(json);
        json.EndObject();
        return text.GetString();
    }

    /// Readers see the old content or the new one.
    static void Replace(const fs::path& path, const std::string& content) {
        fs::path beginning = path;
        beginning += ".tmp";
        std::ofstream(beginning, std::ios::binary) << content;
        fs::rename(beginning, path);
    }

    std::string id;
    fs::path workDirectory;
    fs::path outputDirectory;
    std::vector<fs::path> inputs;
    std::vector<fs::path> outputs;
};

void Work(Job& job) {
    std::string report;
    int done = 0;
    for (const fs::path& input : job.Inputs()) {
        const std::string name = ToUtf8(input.filename());
        job.Progress(100 * done++ / static_cast<int>(job.Inputs().size()), "Reading " + name);
        std::error_code error;
        const std::uintmax_t size = fs::file_size(input, error);
        if (error) {
            throw std::runtime_error(name + " cannot be read.");
        }
        report += name + ": " + std::to_string(size) + " bytes\n";
    }
    job.WriteOutput("report.txt", report);
    job.WriteResult(true, "Files: " + std::to_string(done));
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::cerr << "The path of the run request is missing.\n";
        return 2;
    }
    try {
        Job job(FromUtf8(arguments[count - 1]));
        try {
            Work(job);
        } catch (const std::exception& problem) {
            job.WriteResult(false, problem.what());
            return failed;
        }
    } catch (const Stop&) {
        return stopped;
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return failed;
    }
    return 0;
}
