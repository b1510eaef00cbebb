// Writes the demo collection: a few folders of invented tapes that between
// them hold every block kind the reader decodes, the versions and archive
// texts a real collection has, and the damaged files a collector meets.
// Most tapes go through the engine's own writer; the ones that the writer
// would tidy up (an archive block last or twice, a cut file, TAP files) are
// put together by hand. Beside the tapes lie snapshots, disk images and a
// recording in the other formats a collection holds, and the side folders
// with the loading screens, inlays, maps and code sheets of most titles, all
// drawn here. The output is the same on every run.
//
//   cintal-demo OUTPUT_DIR
//
// The tape formats are in demo/Formats, the pictures in demo/Screen,
// demo/Scenes and demo/Inlays, and the collection's table in demo/Collection.

#include "demo/Collection.h"
#include "demo/Output.h"

#include "tape/Prompt.h"

#include <QGuiApplication>
#include <QString>

#include <filesystem>
#include <iostream>

namespace fs = std::filesystem;
using namespace cintal;

namespace {

// Answers the engine's notes ("otro" for the blocks it has no name for) in
// silence, so that the build log stays clean.
class QuietPrompt : public Prompt {
public:
    Button Show(const Message& m) override { return DefaultAnswer(m.buttons); }
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "uso: cintal-demo CARPETA_DE_SALIDA\n";
        return 2;
    }
    // The pictures are drawn with fonts but without a screen. What Qt says
    // about the desktop session it doesn't find is of no use in a build log.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QGuiApplication app(argc, argv);
    qInstallMessageHandler(previous);
    QuietPrompt quiet;
    PromptScope scope(quiet);

    const fs::path root = argv[1];
    const struct {
        const char* name;
        void (*fill)(const fs::path&);
    } folders[] = {{"Juegos", demo::Juegos},
                   {"Utilidades", demo::Utilidades},
                   {"Varios", demo::Varios},
                   {"Discos", demo::Discos}};
    for (const auto& folder : folders) {
        fs::path dir = root / folder.name;
        std::error_code ec;
        // Start from nothing, so that a file dropped from the list doesn't linger.
        fs::remove_all(dir, ec);
        fs::create_directories(dir, ec);
        if (ec) {
            std::cerr << "cintal-demo: no se puede crear " << dir.string() << ": " << ec.message()
                      << "\n";
            return 1;
        }
        folder.fill(dir);
    }
    return demo::Failures() == 0 ? 0 : 1;
}
