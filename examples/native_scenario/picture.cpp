#include "picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include <zlib.h>

namespace {

using Colour = std::array<double, 3>;

constexpr Colour paper{250, 250, 250};
constexpr Colour steel{112, 148, 190};
/// From where the light comes, in the picture's axes: right, up, towards the eye. Length 1.
constexpr Vector light{-0.36, 0.48, 0.8};
constexpr double ambient = 0.35;
/// The part of the picture that the mesh fills.
constexpr double filled = 0.85;

/// Turns the mesh by 35 degrees about z and tilts it by 25: right, up, towards the eye.
Vector Seen(const Vector& point) {
    static const double sinTurn = std::sin(0.61), cosTurn = std::cos(0.61), sinTilt = std::sin(0.44),
                        cosTilt = std::cos(0.44);
    const double right = point[0] * cosTurn - point[1] * sinTurn;
    const double away = point[0] * sinTurn + point[1] * cosTurn;
    return {right, point[2] * cosTilt + away * sinTilt, point[2] * sinTilt - away * cosTilt};
}

/// A picture whose pixels know how near they are to the eye.
class Canvas {
public:
    Canvas(int canvasWidth, int canvasHeight)
        : width(canvasWidth), height(canvasHeight), pixels(Count(), paper),
          nearest(Count(), -std::numeric_limits<double>::infinity()) {}

    int Width() const { return width; }
    int Height() const { return height; }
    const Colour& At(int x, int y) const { return pixels[Index(x, y)]; }

    /// Fills a triangle whose corners are column, row and nearness.
    void Fill(const Triangle& corners, const Colour& colour) {
        const auto [left, right] = Range(corners, 0, width);
        const auto [top, bottom] = Range(corners, 1, height);
        const double area = Area(corners[0], corners[1], corners[2]);
        if (area == 0) {
            return;
        }
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x) {
                FillPixel(corners, area, x, y, colour);
            }
        }
    }

private:
    std::size_t Count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }

    static double Area(const Vector& a, const Vector& b, const Vector& c) {
        return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
    }

    static std::pair<int, int> Range(const Triangle& corners, std::size_t axis, int size) {
        const auto [low, high] = std::minmax({corners[0][axis], corners[1][axis], corners[2][axis]});
        return {std::max(0, static_cast<int>(low)), std::min(size - 1, static_cast<int>(high) + 1)};
    }

    void FillPixel(const Triangle& corners, double area, int x, int y, const Colour& colour) {
        const Vector point{static_cast<double>(x), static_cast<double>(y), 0};
        const double a = Area(corners[1], corners[2], point) / area;
        const double b = Area(corners[2], corners[0], point) / area;
        const double c = 1 - a - b;
        const double nearness = a * corners[0][2] + b * corners[1][2] + c * corners[2][2];
        if (std::min({a, b, c}) >= 0 && nearness > nearest[Index(x, y)]) {
            nearest[Index(x, y)] = nearness;
            pixels[Index(x, y)] = colour;
        }
    }

    int width;
    int height;
    std::vector<Colour> pixels;
    std::vector<double> nearest;
};

Colour Shaded(const Triangle& seen) {
    const Vector normal = NormalOf(seen);
    const double length = std::sqrt(Dot(normal, normal));
    const double lit = length == 0 ? 0 : std::abs(Dot(normal, light)) / length;
    Colour colour = steel;
    for (double& value : colour) {
        value = std::min(255.0, value * (ambient + (1.25 - ambient) * lit));
    }
    return colour;
}

/// From the picture's axes to columns and rows.
struct Projection {
    Vector centre;
    double scale = 1;
    int width = 0;
    int height = 0;

    Vector operator()(const Vector& seen) const {
        return {width / 2.0 + (seen[0] - centre[0]) * scale, height / 2.0 - (seen[1] - centre[1]) * scale, seen[2]};
    }
};

Projection Fitting(const Mesh& mesh, int width, int height) {
    Vector low = Seen(mesh[0][0]), high = low;
    for (const Triangle& triangle : mesh) {
        for (const Vector& corner : triangle) {
            const Vector point = Seen(corner);
            for (std::size_t axis = 0; axis < point.size(); ++axis) {
                low[axis] = std::min(low[axis], point[axis]);
                high[axis] = std::max(high[axis], point[axis]);
            }
        }
    }
    const Vector size = high - low;
    const double largest = std::max({size[0] / width, size[1] / height, std::numeric_limits<double>::min()});
    return {{(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, 0}, filled / largest, width, height};
}

void AppendBigEndian(std::string& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
}

void AppendChunk(std::string& png, const std::string& type, const std::string& content) {
    const std::string body = type + content;
    AppendBigEndian(png, static_cast<std::uint32_t>(content.size()));
    png += body;
    AppendBigEndian(png, static_cast<std::uint32_t>(
                             crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()))));
}

std::string Compressed(const std::string& bytes) {
    const auto length = static_cast<std::uint32_t>(bytes.size());
    uLongf size = compressBound(length);
    std::string compressed(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(compressed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
                  length, Z_BEST_COMPRESSION) != Z_OK) {
        throw std::runtime_error("The picture cannot be compressed.");
    }
    compressed.resize(size);
    return compressed;
}

/// The middle of each two by two pixels, which smooths edges. Each row begins with its filter: none.
std::string HalvedRows(const Canvas& canvas) {
    std::string rows;
    for (int y = 0; y + 1 < canvas.Height(); y += 2) {
        rows += '\0';
        for (int x = 0; x + 1 < canvas.Width(); x += 2) {
            for (std::size_t channel = 0; channel < 3; ++channel) {
                const double sum = canvas.At(x, y)[channel] + canvas.At(x + 1, y)[channel] +
                                   canvas.At(x, y + 1)[channel] + canvas.At(x + 1, y + 1)[channel];
                rows += static_cast<char>(static_cast<unsigned char>(sum / 4));
            }
        }
    }
    return rows;
}

std::string PngOf(const Canvas& canvas) {
    std::string header;
    AppendBigEndian(header, static_cast<std::uint32_t>(canvas.Width() / 2));
    AppendBigEndian(header, static_cast<std::uint32_t>(canvas.Height() / 2));
    // Eight bits for each of red, green and blue; no interlacing.
    header += std::string("\x08\x02\x00\x00\x00", 5);
    std::string png = "\x89PNG\r\n\x1A\n";
    AppendChunk(png, "IHDR", header);
    AppendChunk(png, "IDAT", Compressed(HalvedRows(canvas)));
    AppendChunk(png, "IEND", "");
    return png;
}

} // namespace

std::string DrawPng(const Mesh& mesh, int width, const std::function<void(double)>& progress) {
    Canvas canvas(2 * width, 2 * (width * 3 / 4));
    const Projection projection = Fitting(mesh, canvas.Width(), canvas.Height());
    constexpr std::size_t trianglesAtOnce = 1000;
    for (std::size_t i = 0; i < mesh.size(); ++i) {
        if (i % trianglesAtOnce == 0) {
            progress(static_cast<double>(i) / static_cast<double>(mesh.size()));
        }
        const Triangle seen{Seen(mesh[i][0]), Seen(mesh[i][1]), Seen(mesh[i][2])};
        canvas.Fill({projection(seen[0]), projection(seen[1]), projection(seen[2])}, Shaded(seen));
    }
    return PngOf(canvas);
}
