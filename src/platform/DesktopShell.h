#pragma once

#include "platform/Shell.h"

namespace cintal {

class DesktopShell : public Shell {
public:
    bool Open(const QString& target) override;
};

} // namespace cintal
