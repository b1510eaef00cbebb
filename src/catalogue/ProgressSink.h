#pragma once

#include <QString>

namespace cintal {

// Where a long read of the catalogue shows its progress while the program
// starts: a heading and a count.
class ProgressSink {
public:
    virtual ~ProgressSink() = default;
    virtual void SetHeading(const QString& text) = 0;
    virtual void SetCount(const QString& text) = 0;
};

} // namespace cintal
