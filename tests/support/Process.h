#pragma once

#include <string>

namespace testsupport {

struct ProcessResult {
    int status = -1; // the exit code, -1 when the process did not exit normally
    std::string out;
    std::string err;
};

// Runs `command` through the shell, capturing its standard output and error apart.
ProcessResult runCommand(std::string const& command);

// `text` in single quotes for the shell.
std::string quote(std::string const& text);

// True when `program` can be started from the PATH.
bool haveProgram(std::string const& program);

} // namespace testsupport
