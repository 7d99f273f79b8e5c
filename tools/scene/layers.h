// The layers of the scene, each painted over those before it.
#pragma once

#include "scene/canvas.h"

namespace host
{
// Where the far shore meets the lake, and where the table begins.
constexpr double horizon = 292;
constexpr double tableEdge = 458;

void paintSky(Canvas& canvas);
void paintMountains(Canvas& canvas);
void paintLake(Canvas& canvas);

void paintTree(Canvas& canvas);
void paintMeadow(Canvas& canvas);

void paintTable(Canvas& canvas);
void paintSkinSpheres(Canvas& canvas);
void paintGlass(Canvas& canvas);
// The soft shadow of something that stands on the table.
void paintShadow(Canvas& canvas, Area base, double strength);

void paintColourCard(Canvas& canvas);
void paintLineCard(Canvas& canvas);
} // namespace host
