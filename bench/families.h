// The rows of every family.
#pragma once

#include "buffers.h"
#include "rows.h"

namespace bench
{
void addCore(Buffers& b);
void addAdjust(Buffers& b);
void addFilters(Buffers& b);
void addMasks(Buffers& b);
void addBrushes();
void addSeams();
void addTracing();

/// A row of what fills tables of so many bytes: each time in memory that has never been touched.
void measureTables(const std::string& name, size_t bytes, std::function<void(std::byte* memory)> fill);

// What the peers of whole chains are given as well.
constexpr int32_t seamColumns = 1200;
constexpr int32_t seamRows = 800;
constexpr int32_t seams = 120;
const Pixels& smallPhotograph();
constexpr int32_t mapColumns = 2000;
constexpr int32_t mapRows = 1500;
/// A two-level map of 900 discs, in all four channels.
const Pixels& discs();
/// A two-level map of the whole photograph.
const Pixels& bitmap();
} // namespace bench
