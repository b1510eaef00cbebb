#include "platform/FileSync.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "views/Principal.h"
#include "widgets/DesktopShell.h"
#include "widgets/Pictures.h"
#include "widgets/QtPrompt.h"

#include <QApplication>
#include <QTimer>
#include <cstring>
#include <iostream>

namespace {

const char* const kHelp = "Uso: cintal [ARCHIVO]\n"
                          "Catálogo de programas de ZX Spectrum.\n"
                          "\n"
                          "  ARCHIVO      una cinta TZX que abrir en el inspector\n"
                          "  --help       muestra esta ayuda\n"
                          "  --version    muestra la versión\n";

} // namespace

int main(int argc, char** argv) {
    // Before the window system is asked for: these need no display.
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--version") == 0) {
            std::cout << "cintal " CINTAL_VERSION "\n";
            return 0;
        }
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::cout << kHelp;
            return 0;
        }
    }
    cintal::UseFileSync();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Cintal"));
    QApplication::setApplicationVersion(QStringLiteral(CINTAL_VERSION));
    // What Qt leaves once it has taken its own options.
    const QStringList args = QApplication::arguments().mid(1);
    if (args.size() > 1 || (!args.isEmpty() && args[0].startsWith('-'))) {
        std::cerr << "cintal: argumentos no válidos\n" << kHelp;
        return 2;
    }
    QApplication::setWindowIcon(cintal::Pictures::AppIcon());
    // Qt's own dialogs and buttons, and the numbers, in Spanish whatever the
    // machine's language; without the translations Qt's texts stay English.
    cintal::UseSpanish();
    cintal::LoadQtSpanish();
    cintal::QtPrompt prompt;
    cintal::SetPrompt(&prompt);
    cintal::DesktopShell shell;
    cintal::Shell::Set(&shell);

    cintal::Principal window;
    if (!window.Form_Load()) return 1;
    window.show();
    // Once the window stands, so that the inspector opens over it.
    if (!args.isEmpty())
        QTimer::singleShot(0, &window, [&window, file = args[0]] { window.OpenGivenFile(file); });
    return app.exec();
}
