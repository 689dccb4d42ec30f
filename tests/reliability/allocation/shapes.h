// Parameter files of awkward shapes, each as large as one asks for.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace shapes {

struct Shape {
    char const* name;
    std::string (*make)(std::size_t count); // a file of so many lines or so
};

// All of them.
std::vector<Shape> const& All();

inline void PrintTo(Shape const& shape, std::ostream* out) {
    *out << shape.name;
}

} // namespace shapes
