// The tool-kit's one log: a thin layer over Boost.Log with up to three streams.
#pragma once

#include <boost/log/trivial.hpp>

#include <memory>
#include <sstream>
#include <string>

namespace orvel::core::global_logging {

using boost::log::trivial::severity_level;

/// Sets the sink up, with no stream attached, logging disabled and every severity let through.
/// Until it ran, nothing is written anywhere, and the functions that enable or disable do nothing
/// and leave nothing for later: what they are to switch on is asked for again afterwards. Running
/// it again starts afresh.
void initialize();

/// Lets records through to the streams that are attached; there is nothing to see without both.
void enable();
void disable();

void enableConsole();
void disableConsole();

/// Opens the log file, appending unless told otherwise. A file that can't be opened loses its
/// lines without an error.
void enableFile();
void disableFile();

/// Names the log file; an open log moves to it at once. The name survives `initialize`.
void setFile(const std::string& name, bool append);

void enableString();
void disableString();
void clearString();

/// Null before `initialize`, which makes a new one each time.
std::shared_ptr<std::stringstream> getString();

/// Drops what is less severe than `level`, until the next `initialize`.
void setSeverity(severity_level level);
severity_level getSeverity();
bool isConsoleEnabled();
bool isFileEnabled();
bool isStringEnabled();

/// Where a line is written from.
struct Place {
    const char* file;
    int line;
    const char* function;
};

/// Writes "file(line) function: text", with the file's leaf name and the function's bare name.
void write(severity_level severity, const Place& place, const std::string& text);

/// Writes `text` as it stands.
void writePlain(severity_level severity, const std::string& text);

/// Whether a record of this severity would be written: lets callers skip composing one.
bool isWritten(severity_level severity);

// The parts of a message's form.

/// The path without its directories.
std::string leafName(const std::string& path);

/// The function's name without any qualifier.
std::string bareName(const std::string& function);

}  // namespace orvel::core::global_logging

/// The place of the line that it stands in.
#define ORVEL_HERE                                                                                 \
    ::orvel::core::global_logging::Place {                                                         \
        __FILE__, __LINE__, __func__                                                               \
    }
