#include "platform/DesktopShell.h"
#include "platform/Memory.h"
#include "platform/QtPrompt.h"
#include "tape/Prompt.h"
#include "views/Pictures.h"
#include "views/Principal.h"

#include <QApplication>

int main(int argc, char** argv) {
    cintal::KeepFreedMemory();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Cintal"));
    QApplication::setWindowIcon(cintal::Pictures::AppIcon());
    cintal::QtPrompt prompt;
    cintal::SetPrompt(&prompt);
    cintal::DesktopShell shell;
    cintal::Shell::Set(&shell);

    cintal::Principal window;
    if (!window.Form_Load()) return 1;
    window.show();
    return app.exec();
}
