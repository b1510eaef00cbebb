#include "platform/FileSync.h"
#include "platform/Spanish.h"
#include "tape/Prompt.h"
#include "views/Principal.h"
#include "widgets/DesktopShell.h"
#include "widgets/Pictures.h"
#include "widgets/QtPrompt.h"

#include <QApplication>

int main(int argc, char** argv) {
    cintal::UseFileSync();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Cintal"));
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
    return app.exec();
}
