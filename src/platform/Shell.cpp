#include "platform/Shell.h"

namespace cintal {

namespace {

// Until the desktop sets its own, nothing is opened: a headless run has no
// desktop to open things with.
class NoShell : public Shell {
public:
    bool Open(const QString&) override { return false; }
    bool Start(const QString&, const QStringList&, QString* reason) override {
        if (reason) *reason = QStringLiteral("no hay escritorio");
        return false;
    }
};

NoShell none;
Shell* current = nullptr;

} // namespace

Shell& Shell::Current() {
    return current ? *current : none;
}

void Shell::Set(Shell* shell) {
    current = shell;
}

} // namespace cintal
