// Lumivex for C++20: every function of lumivex.h by its English name, on views that carry their size, and the work that
// takes several calls in the right order. lumivex.h stays the manual: a call here does what its entry there says.
//
// What changes against C: a picture, its width and its height are one view; a selection with its flag, a colour, a
// rectangle, a dab and the tables of a colour space are one argument each; what is ignored is gone; what may be left out
// stands at the end. Sizes that do not fit throw a ShapeError before anything is done. The calls are inline and keep
// nothing: views, selections and tables outlive the call that takes them, and nothing more is asked of them.
#pragma once

// g++ 10 calls its C++20 by an earlier date, so this asks for anything after C++17.
#if !(__cplusplus > 201703L || (defined(_MSVC_LANG) && _MSVC_LANG > 201703L))
#error "lumivex.hpp needs C++20 (-std=c++20); lumivex.h is for C and every C++"
#else

#include "lumivex/areas.hpp"
#include "lumivex/calls.hpp"
#include "lumivex/equaliser.hpp"
#include "lumivex/names.hpp"
#include "lumivex/outline_tracer.hpp"
#include "lumivex/points.hpp"
#include "lumivex/progress.hpp"
#include "lumivex/seam_carver.hpp"
#include "lumivex/stroke.hpp"
#include "lumivex/tables.hpp"
#include "lumivex/views.hpp"

#endif
