#include "Output.h"

#include <QImage>

#include <fstream>
#include <iostream>

namespace cintal::demo {

namespace {

int failures = 0;

enum class Side { Screens, Inlays, Maps, Codes };

// The side folders as each demo folder spells them. The collection was put
// together on a system that ignores case, and the program finds them so.
fs::path SideDir(const fs::path& dir, Side side) {
    struct Spelling {
        const char* folder;
        const char* names[4];
    };
    static const Spelling kSpellings[] = {
        {"Juegos", {"scrshot", "Inlay", "Map", "Codesheet"}},
        {"Utilidades", {"SCRSHOT", "inlay", "Map", "Codesheet"}},
        {"Varios", {"ScrShot", "Inlay", "map", "Codesheet"}},
        {"Discos", {"scrshot", "INLAY", "Map", "CODESHEET"}},
    };
    const char* name = kSpellings[0].names[static_cast<int>(side)];
    for (const Spelling& s : kSpellings)
        if (dir.filename() == s.folder) name = s.names[static_cast<int>(side)];
    std::error_code ec;
    fs::create_directories(dir / name, ec);
    return dir / name;
}

// The title as its side files are named: ": " becomes " - ", "?" goes.
std::string SideBase(std::string title) {
    for (std::size_t at = title.find(": "); at != std::string::npos; at = title.find(": ", at))
        title.replace(at, 2, " - ");
    std::erase(title, '?');
    return title;
}

void Picture(const fs::path& dir, const std::string& name, const QImage& img) {
    const Bytes jpeg = Jpeg(img);
    if (jpeg.empty()) {
        std::cerr << "cintal-demo: no se puede hacer el JPEG " << name << "\n";
        ++failures;
        return;
    }
    Write(dir, name, jpeg);
}

} // namespace

int Failures() {
    return failures;
}

void Write(const fs::path& dir, const std::string& name, const Bytes& bytes) {
    fs::path path = dir / name;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        std::cerr << "cintal-demo: no se puede escribir " << path.string() << "\n";
        ++failures;
    }
}

void ScreenFile(const fs::path& dir, const Art& art, const std::string& name) {
    Write(SideDir(dir, Side::Screens), name.empty() ? SideBase(art.title) + ".scr" : name,
          LoadingScreenOf(art).Encode());
}

void InlayFile(const fs::path& dir, const Art& art, InlayShape shape, const std::string& name) {
    Picture(SideDir(dir, Side::Inlays), name.empty() ? SideBase(art.title) + ".jpg" : name,
            InlayOf(art, shape));
}

void MapFile(const fs::path& dir, const Art& art, MapKind kind, QSize size) {
    Picture(SideDir(dir, Side::Maps), SideBase(art.title) + "_Map.jpg", MapOf(art, kind, size));
}

void CodeSheetFile(const fs::path& dir, const Art& art, CodeKind kind) {
    Picture(SideDir(dir, Side::Codes), SideBase(art.title) + "_Codesheet.jpg",
            CodeSheetOf(art, kind));
}

Art ArtOf(const Info& info, Scene scene) {
    return Art{.title = info.name,
               .publisher = info.publisher,
               .year = info.year,
               .scene = scene,
               .blurb = info.comments};
}

} // namespace cintal::demo
