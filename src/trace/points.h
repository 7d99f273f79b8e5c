// Points of outlines and polylines, pairs of floats in the host's memory.
#pragma once

#include "core/convert.h"

namespace lumivex::LUMIVEX_LEVEL
{
struct Point
{
    float x;
    float y;
};

inline Point pointAt(const float* points, int64_t index)
{
    return load<Point>(points + index * 2);
}

inline void setPoint(float* points, int64_t index, Point point)
{
    store(points + index * 2, point);
}

/// Doubles, or registers of them.
template <class V>
struct Vector
{
    V x;
    V y;

    friend Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y}; }
    friend Vector operator-(Vector a, Vector b) { return {a.x - b.x, a.y - b.y}; }
    friend Vector operator*(V factor, Vector a) { return {factor * a.x, factor * a.y}; }
    friend V dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y; }
};
} // namespace lumivex::LUMIVEX_LEVEL
