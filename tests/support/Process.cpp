#include "Process.h"

#include "Files.h"
#include "ScratchDir.h"

#include <sys/wait.h>

#include <cstdio>

namespace testsupport {

ProcessResult runCommand(std::string const& command) {
    ScratchDir const scratch("process");
    auto const errFile = scratch / "stderr";
    ProcessResult result;
    FILE* pipe = ::popen((command + " 2>" + quote(errFile.string())).c_str(), "r");
    if (pipe == nullptr)
        return result;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        result.out.append(buffer, n);
    int const raw = ::pclose(pipe);
    result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    result.err = readFile(errFile);
    return result;
}

std::string quote(std::string const& text) {
    std::string quoted = "'";
    for (char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

bool haveProgram(std::string const& program) {
    return runCommand("command -v " + quote(program)).status == 0;
}

} // namespace testsupport
