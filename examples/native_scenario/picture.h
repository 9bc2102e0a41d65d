#pragma once

#include "mesh.h"

#include <functional>
#include <string>

/// Draws a mesh seen from the front, the right and above, as a PNG file of `width` by three quarters of it. Calls
/// `progress` with how much is drawn, from 0 to 1.
std::string DrawPng(const Mesh& mesh, int width, const std::function<void(double)>& progress);
