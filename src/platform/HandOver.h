#pragma once

namespace cintal::platform {

// Runs the program of that name that stands beside the running one, with
// the same arguments (argv as main was given it), and returns its exit
// status; where the system can, the running program becomes it and this
// never returns. When it can't be run, says why on standard error and
// returns 2.
int HandOver(const char* program, char** argv);

} // namespace cintal::platform
