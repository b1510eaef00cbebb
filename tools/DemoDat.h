#pragma once

#include <QString>

namespace cintal::demo {

// Writes a small DAT for the demo's own tapes into the collection folder:
// a few of its files under their canonical names (one inside an archive when
// the demo has one) and a few games it lacks. Then loads it into the open
// catalogue. False, with the reason, when it can't.
bool WriteAndLoadDat(const QString& demoDir, QString& why);

} // namespace cintal::demo
