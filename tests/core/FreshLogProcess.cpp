// A program that uses the tool-kit's log from its first moment: its output is what a process
// writes that has not initialized the log before. The scenario is its argument.
#include "core/GlobalLogging.h"
#include "core/Memory.h"
#include "core/XmlConverter.h"

#include <string>
#include <string_view>

namespace {

using namespace orvel::core;
using namespace orvel::core::global_logging;
namespace severities = boost::log::trivial;

constexpr int DONE = 0;
constexpr int FAILED = 1;

/// One line in every way in which the core writes them.
void writeAll() {
    writePlain(severities::fatal, "plain");
    write(severities::fatal, ORVEL_HERE, "placed");
    static_cast<void>(XmlConverter::toXml(std::string("garbage")));
    static_cast<void>(XmlConverter::toXml(std::string("<Foo/>")));
    static_cast<void>(memCopy(nullptr, 0, nullptr, 1));
}

int writeBeforeInitialize() {
    writeAll();
    enable();
    enableConsole();
    enableString();
    enableFile();
    setSeverity(severities::trace);
    writeAll();
    const bool isOff = !isConsoleEnabled() && !isStringEnabled() && !isFileEnabled() &&
                       !isWritten(severities::fatal) && getString() == nullptr;
    clearString();
    disableFile();
    disableString();
    disableConsole();
    disable();
    return isOff ? DONE : FAILED;
}

int writeBeforeEnable() {
    initialize();
    writeAll();
    enableConsole();
    writeAll();
    return DONE;
}

int writeWithoutStream() {
    initialize();
    enable();
    writeAll();
    return DONE;
}

int writeToConsole() {
    initialize();
    enable();
    enableConsole();
    writePlain(severities::fatal, "seen");
    return DONE;
}

int writeToDefaultFile() {
    initialize();
    enable();
    enableFile();
    writePlain(severities::fatal, "seen");
    disableFile();
    enableFile();
    writePlain(severities::fatal, "again");
    return DONE;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view scenario = argc == 2 ? argv[1] : "";
    if (scenario == "before-initialize") return writeBeforeInitialize();
    if (scenario == "before-enable") return writeBeforeEnable();
    if (scenario == "without-stream") return writeWithoutStream();
    if (scenario == "console") return writeToConsole();
    if (scenario == "default-file") return writeToDefaultFile();
    return FAILED;
}
