#include "core/GlobalLogging.h"

#include <boost/core/null_deleter.hpp>
#include <boost/filesystem/path.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_logger.hpp>
#include <boost/log/support/date_time.hpp>
#include <boost/log/utility/setup/common_attributes.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <fstream>
#include <iostream>

namespace orvel::core::global_logging {

namespace {

using Backend = boost::log::sinks::text_ostream_backend;
using Sink = boost::log::sinks::synchronous_sink<Backend>;

/// Set by `initialize`. Stands apart from the log's state, so that a run which never logs makes
/// neither that nor a Boost.Log core: a core without a sink writes to the console by itself.
constinit bool isInitialized = false;

struct Log {
    boost::shared_ptr<Backend> backend;  ///< null before `initialize`, as the sink is
    boost::shared_ptr<Sink> sink;
    boost::shared_ptr<std::ostream> consoleLog;  ///< the standard log stream, never deleted
    bool consoleEnabled = false;
    std::shared_ptr<std::stringstream> stringLog;
    bool stringEnabled = false;
    boost::shared_ptr<std::ofstream> fileLog;  ///< null until opened
    std::string fileLogName = "orvel.log";
    bool fileLogAppend = true;
    bool fileEnabled = false;
    severity_level severityLevel = boost::log::trivial::trace;
};

Log& log() {
    static Log instance;
    return instance;
}

/// Takes the sink of an earlier `initialize` away, and with it every attached stream.
void discardSink() {
    if (log().sink) boost::log::core::get()->remove_sink(log().sink);
    log().sink.reset();
    log().backend.reset();
    log().fileLog.reset();
    log().consoleEnabled = log().stringEnabled = log().fileEnabled = false;
}

/// The string log as the backend takes it; it knows its streams by their addresses.
boost::shared_ptr<std::ostream> attachable(const std::shared_ptr<std::stringstream>& stream) {
    return {stream.get(), [stream](std::ostream*) {}};
}

}  // namespace

void initialize() {
    namespace expr = boost::log::expressions;
    const auto core = boost::log::core::get();
    core->set_logging_enabled(false);
    discardSink();
    isInitialized = true;
    setSeverity(boost::log::trivial::trace);
    boost::log::add_common_attributes();

    log().backend = boost::make_shared<Backend>();
    log().backend->auto_flush(true);
    log().consoleLog = boost::shared_ptr<std::ostream>(&std::clog, boost::null_deleter());
    log().stringLog = std::make_shared<std::stringstream>();

    log().sink = boost::make_shared<Sink>(log().backend);
    log().sink->set_formatter(
        expr::stream << expr::format_date_time<boost::posix_time::ptime>("TimeStamp", "%H:%M:%S:%f")
                     << " [" << boost::log::trivial::severity << "] " << expr::smessage);
    core->add_sink(log().sink);
}

void enable() {
    if (isInitialized) boost::log::core::get()->set_logging_enabled(true);
}

void disable() {
    if (isInitialized) boost::log::core::get()->set_logging_enabled(false);
}

void enableConsole() {
    if (!isInitialized) return;
    log().backend->add_stream(log().consoleLog);
    log().consoleEnabled = true;
}

void disableConsole() {
    if (!isInitialized) return;
    log().backend->remove_stream(log().consoleLog);
    log().consoleEnabled = false;
}

void enableFile() {
    if (!isInitialized || log().fileLogName.empty()) return;
    if (log().fileLog) disableFile();
    const auto mode = log().fileLogAppend ? std::ios::out | std::ios::app : std::ios::out;
    log().fileLog = boost::make_shared<std::ofstream>(log().fileLogName, mode);
    log().backend->add_stream(log().fileLog);
    log().fileEnabled = true;
}

void disableFile() {
    if (!log().fileLog) return;
    log().backend->remove_stream(log().fileLog);
    log().fileLog->close();
    log().fileEnabled = false;
}

void setFile(const std::string& name, bool append) {
    const bool moves = log().fileEnabled;
    if (moves) disableFile();
    log().fileLogName = name;
    log().fileLogAppend = append;
    if (moves) enableFile();
}

void enableString() {
    if (!isInitialized) return;
    log().backend->add_stream(attachable(log().stringLog));
    log().stringEnabled = true;
}

void disableString() {
    if (!isInitialized) return;
    log().backend->remove_stream(attachable(log().stringLog));
    log().stringEnabled = false;
}

void clearString() {
    if (!log().stringLog) return;
    log().stringLog->str({});
    // Whoever read to the end left it in a state that takes no more.
    log().stringLog->clear();
}

std::shared_ptr<std::stringstream> getString() {
    return log().stringLog;
}

void setSeverity(severity_level level) {
    log().severityLevel = level;
    if (!isInitialized) return;
    boost::log::core::get()->reset_filter();
    boost::log::core::get()->set_filter(boost::log::trivial::severity >= level);
}

severity_level getSeverity() {
    return log().severityLevel;
}

bool isConsoleEnabled() {
    return log().consoleEnabled;
}

bool isFileEnabled() {
    return log().fileEnabled;
}

bool isStringEnabled() {
    return log().stringEnabled;
}

void write(severity_level severity, const Place& place, const std::string& text) {
    if (!isWritten(severity)) return;
    writePlain(severity, leafName(place.file) + "(" + std::to_string(place.line) + ") " +
                             bareName(place.function) + ": " + text);
}

void writePlain(severity_level severity, const std::string& text) {
    if (!isInitialized) return;
    static boost::log::sources::severity_logger_mt<severity_level> logger;
    BOOST_LOG_SEV(logger, severity) << text;
}

bool isWritten(severity_level severity) {
    return isInitialized && severity >= log().severityLevel &&
           boost::log::core::get()->get_logging_enabled() &&
           (log().consoleEnabled || log().fileEnabled || log().stringEnabled);
}

std::string leafName(const std::string& path) {
    return boost::filesystem::path(path).filename().string();
}

std::string bareName(const std::string& function) {
    // Without a ":", the place behind "npos" is the beginning.
    return function.substr(function.rfind(':') + 1);
}

}  // namespace orvel::core::global_logging
