#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A point or direction: x, y, z.
using Vector = std::array<double, 3>;
using Triangle = std::array<Vector, 3>;
using Mesh = std::vector<Triangle>;

Vector operator-(const Vector& left, const Vector& right);
Vector Cross(const Vector& left, const Vector& right);
double Dot(const Vector& left, const Vector& right);
/// Perpendicular to the triangle, as long as twice its area.
Vector NormalOf(const Triangle& triangle);

/// Reads an STL file, text or binary. Throws `std::runtime_error` with the end of a sentence about the file.
Mesh ReadStl(std::string_view bytes);

struct Measures {
    Vector minimum{};
    Vector maximum{};
    double surface = 0;
    /// Meaningful for a closed mesh only.
    double volume = 0;
    /// The edges that do not belong to two triangles that are turned the same way; 0: the mesh is closed.
    std::size_t openEdges = 0;
};

/// `mesh` must not be empty.
Measures Measure(const Mesh& mesh);
