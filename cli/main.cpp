#include "CodecHost.h"
#include "CommandLine.h"
#include "ConvertCommand.h"
#include "InfoCommand.h"
#include "SelfCheckCommand.h"
#include "TempFiles.h"
#include "UsageError.h"
#include "tiles/TilesCommand.h"

#include <kolt/LogLevel.h>
#include <koltx/Log.h>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    // Before any thread exists: the signals are then blocked in all of them.
    TempFiles::removeOnSignals();
    try {
        CommandLine const line =
            CommandLine::parse(std::vector<std::string>(argv + 1, argv + argc));
        if (line.command == "help") {
            std::cout << CommandLine::usage();
            return 0;
        }
        if (line.command == "version") {
            std::cout << "gmlcodec " << GMLCODEC_VERSION << "\n";
            return 0;
        }
        // The host log carries only what is worth a user's attention.
        koltx::Log::setThreshold(kolt::LOG_WARNING);
        CodecHost const host(line.extensionsDir);
        if (line.command == "selfcheck")
            return SelfCheckCommand::run(host, std::cout, std::cerr);
        if (line.command == "info")
            return InfoCommand::run(host, line, std::cout, std::cerr);
        if (line.command == "tiles")
            return TilesCommand::run(host, line, std::cout, std::cerr);
        return ConvertCommand::run(host, line, std::cout, std::cerr);
    } catch (UsageError const& e) {
        std::cerr << "gmlcodec: " << e.what() << "\n\n" << CommandLine::usage();
        return 2;
    } catch (std::exception const& e) {
        std::cerr << "gmlcodec: " << e.what() << "\n";
        return 1;
    }
}
