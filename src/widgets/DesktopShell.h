#pragma once

#include "platform/Shell.h"

namespace cintal {

class DesktopShell : public Shell {
public:
    bool Open(const QString& target) override;
    bool Start(const QString& program, const QStringList& arguments, QString* reason) override;
};

} // namespace cintal
