#include "job.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace fs = std::filesystem;

namespace {

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void PutText(JsonWriter& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

fs::path PathOf(const rapidjson::Value& text) {
    return {std::u8string(text.GetString(), text.GetString() + text.GetStringLength())};
}

const rapidjson::Value& Member(const rapidjson::Document& request, const char* name, rapidjson::Type type) {
    const auto member = request.FindMember(name);
    if (member == request.MemberEnd() || member->value.GetType() != type) {
        throw std::runtime_error(std::string("The run request has no usable \"") + name + "\".");
    }
    return member->value;
}

void WriteBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    if (!file) {
        throw std::runtime_error(TextOf(path) + " cannot be written.");
    }
}

/// On Windows a file cannot be replaced while the controller reads it, which takes a moment only.
void Rename(const fs::path& from, const fs::path& to) {
    std::error_code error;
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::rename(from, to, error);
        if (!error) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error(TextOf(to) + " cannot be replaced: " + error.message());
}

} // namespace

std::string TextOf(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file.is_open() || (file.peek() != std::ifstream::traits_type::eof() && !(bytes << file.rdbuf()))) {
        throw std::runtime_error(TextOf(path.filename()) + " cannot be read.");
    }
    return bytes.str();
}

Job::Job(const fs::path& requestFile) {
    rapidjson::Document request;
    request.Parse(ReadBytes(requestFile).c_str());
    if (!request.IsObject()) {
        throw std::runtime_error("The run request is not JSON.");
    }
    id = Member(request, "jobId", rapidjson::kStringType).GetString();
    workDirectory = PathOf(Member(request, "workDir", rapidjson::kStringType));
    outputDirectory = PathOf(Member(request, "outputFolder", rapidjson::kStringType));
    for (const auto& input : Member(request, "inputFiles", rapidjson::kArrayType).GetArray()) {
        inputs.push_back(PathOf(input));
    }
}

void Job::Progress(int percent, const std::string& message) {
    if (fs::exists(workDirectory / "killprocess")) {
        throw Stopped();
    }
    if (percent == reported) {
        return;
    }
    reported = percent;
    rapidjson::StringBuffer json;
    JsonWriter writer(json);
    writer.StartObject();
    writer.Key("version");
    writer.Int(1);
    writer.Key("jobId");
    PutText(writer, id);
    writer.Key("progressInfoList");
    writer.StartArray();
    writer.StartObject();
    writer.Key("progress");
    writer.Int(percent);
    writer.Key("message");
    PutText(writer, message);
    writer.EndObject();
    writer.EndArray();
    writer.EndObject();
    Replace("progress_info_list.json", json.GetString());
}

void Job::WriteOutput(const std::string& name, std::string_view bytes) {
    fs::create_directories(outputDirectory);
    outputs.push_back(outputDirectory / fs::path(std::u8string(name.begin(), name.end())));
    WriteBytes(outputs.back(), bytes);
}

void Job::End(bool hasSucceeded) {
    rapidjson::StringBuffer json;
    JsonWriter writer(json);
    writer.StartObject();
    writer.Key("version");
    writer.Int(1);
    writer.Key("jobId");
    PutText(writer, id);
    writer.Key("succeeded");
    writer.Bool(hasSucceeded);
    writer.Key("messages");
    writer.StartArray();
    for (const auto& [code, text] : messages) {
        writer.StartObject();
        writer.Key("code");
        writer.Int(code);
        writer.Key("text");
        PutText(writer, text);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("outputFiles");
    writer.StartArray();
    for (const fs::path& output : outputs) {
        PutText(writer, TextOf(output));
    }
    writer.EndArray();
    writer.EndObject();
    Replace("run_scenario_result.json", json.GetString());
}

void Job::Replace(const char* name, std::string_view bytes) const {
    const fs::path temporary = workDirectory / (std::string(name) + ".tmp");
    WriteBytes(temporary, bytes);
    Rename(temporary, workDirectory / name);
}
