#pragma once
// The pictures of the side folders that came on paper: the inlays, the maps
// and the code sheets, painted with Qt and saved as JPEG.

#include "Scenes.h"

#include "tape/Block.h"

#include <QImage>
#include <QSize>

namespace cintal::demo {

Bytes Jpeg(const QImage& img);

enum class InlayShape {
    Unfolded, // back, spine and front side by side: wide
    Front,    // the front alone: tall
    Box       // a box front, four by three
};

QImage InlayOf(const Art& art, InlayShape shape);

enum class MapKind { Rooms, Track };

// A plan of the game: its rooms and the ways between them, or the course of
// a race.
QImage MapOf(const Art& art, MapKind kind, QSize size);

enum class CodeKind { Letters, Colours };

// The sheet that came in the box: the game asks for the code in a square
// before it starts. Printed dark, so that a photocopy of it reads badly.
QImage CodeSheetOf(const Art& art, CodeKind kind);

} // namespace cintal::demo
