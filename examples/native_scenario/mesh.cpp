#include "mesh.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <utility>

static_assert(std::endian::native == std::endian::little, "binary STL files are little-endian");

namespace {

constexpr std::size_t headerSize = 84;
constexpr std::size_t triangleSize = 50;
constexpr std::size_t mostTriangles = 2'000'000;

[[noreturn]] void Refuse(const std::string& problem) {
    throw std::runtime_error(problem);
}

std::uint32_t AnnouncedTriangles(std::string_view bytes) {
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + headerSize - sizeof count, sizeof count);
    return count;
}

/// Some programs begin binary files with "solid" too, so the size decides first.
bool IsBinary(std::string_view bytes) {
    return bytes.size() >= headerSize && bytes.size() == headerSize + triangleSize * AnnouncedTriangles(bytes);
}

void Append(Mesh& mesh, const Triangle& triangle) {
    for (const Vector& corner : triangle) {
        if (!std::all_of(corner.begin(), corner.end(), [](double value) { return std::isfinite(value); })) {
            Refuse("has a coordinate that is no finite number in triangle " + std::to_string(mesh.size() + 1) + ".");
        }
    }
    if (mesh.size() == mostTriangles) {
        Refuse("holds more than " + std::to_string(mostTriangles) + " triangles.");
    }
    mesh.push_back(triangle);
}

Mesh ReadBinary(std::string_view bytes) {
    Mesh mesh;
    for (std::size_t at = headerSize; at < bytes.size(); at += triangleSize) {
        // The normal and three corners.
        std::array<float, 12> values{};
        std::memcpy(values.data(), bytes.data() + at, sizeof values);
        Append(mesh, {{{values[3], values[4], values[5]},
                       {values[6], values[7], values[8]},
                       {values[9], values[10], values[11]}}});
    }
    return mesh;
}

std::string_view TakeWord(std::string_view& text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    return word;
}

/// Independent of the user's locale. Like all coordinates of the format, a number of 32 bits.
double TakeNumber(std::string_view& text) {
    std::string_view word = TakeWord(text);
    word.remove_prefix(word.starts_with('+') ? 1 : 0);
    float value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error == std::errc::invalid_argument || end != word.data() + word.size()) {
        Refuse("has \"" + std::string(word.substr(0, 40)) + "\" where a coordinate should be.");
    }
    return value;
}

Mesh ReadText(std::string_view text) {
    Mesh mesh;
    std::vector<Vector> corners;
    while (!text.empty()) {
        if (TakeWord(text) != "vertex") {
            continue;
        }
        Vector& corner = corners.emplace_back();
        for (double& value : corner) {
            value = TakeNumber(text);
        }
        if (corners.size() == 3) {
            Append(mesh, {corners[0], corners[1], corners[2]});
            corners.clear();
        }
    }
    if (!corners.empty()) {
        Refuse("is cut off in triangle " + std::to_string(mesh.size() + 1) + ".");
    }
    return mesh;
}

/// Counts each directed edge once up and its reverse once down: in a closed mesh all counts are zero.
std::size_t OpenEdges(const Mesh& mesh) {
    std::map<Vector, std::uint32_t> numbers;
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
    for (const Triangle& triangle : mesh) {
        std::array<std::uint32_t, 3> corners{};
        std::transform(triangle.begin(), triangle.end(), corners.begin(), [&numbers](const Vector& corner) {
            return numbers.emplace(corner, static_cast<std::uint32_t>(numbers.size())).first->second;
        });
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const auto [low, high] = std::minmax(corners[i], corners[(i + 1) % 3]);
            edges[{low, high}] += corners[i] == low ? 1 : -1;
        }
    }
    return static_cast<std::size_t>(
        std::count_if(edges.begin(), edges.end(), [](const auto& edge) { return edge.second != 0; }));
}

} // namespace

Vector operator-(const Vector& left, const Vector& right) {
    return {left[0] - right[0], left[1] - right[1], left[2] - right[2]};
}

Vector Cross(const Vector& left, const Vector& right) {
    return {left[1] * right[2] - left[2] * right[1], left[2] * right[0] - left[0] * right[2],
            left[0] * right[1] - left[1] * right[0]};
}

double Dot(const Vector& left, const Vector& right) {
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

Vector NormalOf(const Triangle& triangle) {
    return Cross(triangle[1] - triangle[0], triangle[2] - triangle[0]);
}

Mesh ReadStl(std::string_view bytes) {
    const bool isBinary = IsBinary(bytes);
    if (!isBinary && !bytes.starts_with("solid")) {
        Refuse("is cut off or no STL file: neither does it begin with \"solid\", nor has it the size that a binary "
               "header announces.");
    }
    Mesh mesh = isBinary ? ReadBinary(bytes) : ReadText(bytes);
    if (mesh.empty()) {
        Refuse("holds no triangle.");
    }
    return mesh;
}

Measures Measure(const Mesh& mesh) {
    Measures measures;
    measures.minimum = measures.maximum = mesh.front().front();
    for (const Triangle& triangle : mesh) {
        for (const Vector& corner : triangle) {
            for (std::size_t axis = 0; axis < corner.size(); ++axis) {
                measures.minimum[axis] = std::min(measures.minimum[axis], corner[axis]);
                measures.maximum[axis] = std::max(measures.maximum[axis], corner[axis]);
            }
        }
        const Vector normal = NormalOf(triangle);
        measures.surface += std::sqrt(Dot(normal, normal)) / 2;
        measures.volume += Dot(triangle[0], Cross(triangle[1], triangle[2])) / 6;
    }
    measures.openEdges = OpenEdges(mesh);
    return measures;
}
