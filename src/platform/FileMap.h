#pragma once

namespace cintal {

// Makes the engine read big files through a mapping of the file rather than
// a copy of it. Only for programs that read and end: the mapping counts on
// no one shortening the file while it is read.
void UseFileMap();

} // namespace cintal
