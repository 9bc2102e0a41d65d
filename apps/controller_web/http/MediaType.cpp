#include "controller_web/http/MediaType.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace web {
namespace {

constexpr std::string_view unknownType = "application/octet-stream";

constexpr std::array<std::pair<std::string_view, std::string_view>, 32> types = {{
    {"html", "text/html; charset=utf-8"},
    {"htm", "text/html; charset=utf-8"},
    {"js", "text/javascript; charset=utf-8"},
    {"css", "text/css; charset=utf-8"},
    {"json", "application/json"},
    {"txt", "text/plain; charset=utf-8"},
    {"log", "text/plain; charset=utf-8"},
    {"md", "text/plain; charset=utf-8"},
    {"csv", "text/csv; charset=utf-8"},
    {"xml", "application/xml"},
    {"svg", "image/svg+xml"},
    {"png", "image/png"},
    {"jpg", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"gif", "image/gif"},
    {"webp", "image/webp"},
    {"bmp", "image/bmp"},
    {"ico", "image/x-icon"},
    {"woff2", "font/woff2"},
    {"webmanifest", "application/manifest+json"},
    {"pdf", "application/pdf"},
    {"zip", "application/zip"},
    {"gz", "application/gzip"},
    {"stl", "model/stl"},
    {"obj", "model/obj"},
    {"gltf", "model/gltf+json"},
    {"glb", "model/gltf-binary"},
    {"3mf", "model/3mf"},
    {"step", "model/step"},
    {"stp", "model/step"},
    {"iges", "model/iges"},
    {"igs", "model/iges"},
}};

std::string LowerExtension(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    std::string extension(dot == std::string_view::npos ? std::string_view() : fileName.substr(dot + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return extension;
}

} // namespace

std::string_view MediaTypeOf(std::string_view fileName) {
    const std::string extension = LowerExtension(fileName);
    const auto found =
        std::find_if(types.begin(), types.end(), [&](const auto& type) { return type.first == extension; });
    return found == types.end() ? unknownType : found->second;
}

} // namespace web
