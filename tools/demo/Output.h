#pragma once
// Writing the demo's files: each file in its folder, and each title's
// pictures in the side folders, named as the program looks for them.

#include "Formats.h"
#include "Inlays.h"
#include "Scenes.h"

#include <QSize>

#include <filesystem>
#include <string>

namespace cintal::demo {

namespace fs = std::filesystem;

// A file that can't be written is reported and counted; the rest go on.
void Write(const fs::path& dir, const std::string& name, const Bytes& bytes);

// The files that couldn't be written so far.
int Failures();

// Each writer takes the file name from the title unless it is given one.
void ScreenFile(const fs::path& dir, const Art& art, const std::string& name = {});
void InlayFile(const fs::path& dir, const Art& art, InlayShape shape, const std::string& name = {});
void MapFile(const fs::path& dir, const Art& art, MapKind kind, QSize size);
void CodeSheetFile(const fs::path& dir, const Art& art, CodeKind kind);

Art ArtOf(const Info& info, Scene scene);

} // namespace cintal::demo
