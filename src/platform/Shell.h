#pragma once
// Opening a file or an address with whatever the desktop has for it. Tests
// put a recorder in its place.

#include <QString>
#include <QStringList>

namespace cintal {

class Shell {
public:
    virtual ~Shell() = default;
    // A local path or a web address. False when nothing could open it.
    virtual bool Open(const QString& target) = 0;

    static Shell& Current();
    static void Set(Shell* shell);
};

// Records what would have been opened, and answers as told.
class RecordingShell : public Shell {
public:
    bool Open(const QString& target) override {
        calls << target;
        return result;
    }
    QStringList calls;
    bool result = true;
};

} // namespace cintal
