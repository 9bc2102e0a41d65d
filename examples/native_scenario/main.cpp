/// A scenario without interpreter: measures STL files and draws them. For each input <name>_report.json and
/// <name>_picture.png.

#include "job.h"
#include "mesh.h"
#include "picture.h"

#include <cstdio>
#include <exception>
#include <sstream>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace {

constexpr int pictureWidth = 800;
constexpr int warning = 1;
/// What part of the time for one input is over before the drawing begins.
constexpr double measured = 0.3;
/// Exit codes for a scenario that was asked to stop, and for one without a usable run request.
constexpr int stopped = 3;
constexpr int unusable = 2;

using JsonWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void Put(JsonWriter& writer, const char* name, const Vector& vector) {
    writer.Key(name);
    writer.StartArray();
    for (const double value : vector) {
        writer.Double(value);
    }
    writer.EndArray();
}

std::string ReportOf(const std::string& name, const Mesh& mesh, const Measures& measures) {
    rapidjson::StringBuffer json;
    JsonWriter writer(json);
    writer.StartObject();
    writer.Key("file");
    writer.String(name.c_str());
    writer.Key("triangles");
    writer.Uint64(mesh.size());
    Put(writer, "minimum", measures.minimum);
    Put(writer, "maximum", measures.maximum);
    Put(writer, "size", measures.maximum - measures.minimum);
    writer.Key("surface");
    writer.Double(measures.surface);
    writer.Key("volume");
    writer.Double(measures.volume);
    writer.Key("openEdges");
    writer.Uint64(measures.openEdges);
    writer.EndObject();
    return std::string(json.GetString()) + "\n";
}

std::string Sentence(const std::string& name, const Mesh& mesh, const Measures& measures) {
    const Vector size = measures.maximum - measures.minimum;
    std::ostringstream text;
    text << name << ": " << mesh.size() << " triangles, " << size[0] << " x " << size[1] << " x " << size[2];
    return text.str();
}

void Report(Job& job, std::size_t index) {
    const std::filesystem::path& input = job.Inputs()[index];
    const std::string name = TextOf(input.filename());
    const auto progress = [&](double done, const std::string& what) {
        job.Progress(
            static_cast<int>(100 * (static_cast<double>(index) + done) / static_cast<double>(job.Inputs().size())),
            what + " " + name);
    };
    progress(0, "Reading");
    const std::string bytes = ReadBytes(input);
    Mesh mesh;
    try {
        mesh = ReadStl(bytes);
    } catch (const std::runtime_error& problem) {
        throw std::runtime_error(name + " " + problem.what());
    }
    progress(0.1, "Measuring");
    const Measures measures = Measure(mesh);
    const std::string prefix = (job.Inputs().size() > 1 ? std::to_string(index + 1) + "_" : "") + TextOf(input.stem());
    job.WriteOutput(prefix + "_report.json", ReportOf(name, mesh, measures));
    job.WriteOutput(prefix + "_picture.png", DrawPng(mesh, pictureWidth, [&](double done) {
                        progress(measured + done * (1 - measured), "Drawing");
                    }));
    job.AddMessage(Sentence(name, mesh, measures));
    if (measures.openEdges > 0) {
        job.AddMessage(name + " is not closed (" + std::to_string(measures.openEdges) +
                           " open edges): its volume is not reliable",
                       warning);
    }
}

/// Returns whether the job has succeeded.
bool Run(Job& job) {
    if (job.Inputs().empty()) {
        job.AddMessage("No input file was given; choose one STL file or more.", warning);
        return false;
    }
    try {
        for (std::size_t index = 0; index < job.Inputs().size(); ++index) {
            Report(job, index);
        }
        return true;
    } catch (const std::exception& problem) {
        job.AddMessage(problem.what(), warning);
        return false;
    }
}

} // namespace

/// The work directory is the current one, and the run request is in it.
int main() {
    try {
        Job job("run_scenario_info.json");
        const bool hasSucceeded = Run(job);
        job.End(hasSucceeded);
        return hasSucceeded ? 0 : 1;
    } catch (const Job::Stopped&) {
        return stopped;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return unusable;
    }
}
