// One system-log record per call of the launcher, so that those retiring the legacy
// interface can count who still calls it: the line, the nearest caller that is not a mere
// wrapper (sudo, env, a shell's -c, ...) with its user id, SUDO_USER and the working
// directory. Passwords are masked, and no byte of a value can start a line of its own.
#ifndef TOVAK_LAUNCHER_CALL_RECORD_H
#define TOVAK_LAUNCHER_CALL_RECORD_H

namespace launcher {

// Set, to any value, it switches the record off: for test suites and benchmarks.
constexpr char kNoRecordVariable[] = "TOVAK_NO_SYSLOG";

// Sends the record of this call to /dev/log, without blocking, when a socket is there.
// Prints nothing and never fails the call; the socket is closed before it returns.
void recordCall(int argc, char** argv);

}  // namespace launcher

#endif  // TOVAK_LAUNCHER_CALL_RECORD_H
