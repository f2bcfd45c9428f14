// Scope object that traces entry to and exit from a function of the framework.
#pragma once

namespace cli::framework {

/// Logs "Entering " and the name at construction, "Exiting " and the name at destruction, at the
/// level of the trace. Callers hand over `__FILE__`, which the build cuts to the path from the
/// root.
class TraceObject {
public:
    TraceObject(const char* sourcePath, const char* functionName, int line);
    TraceObject(const TraceObject&) = delete;
    TraceObject& operator=(const TraceObject&) = delete;
    ~TraceObject();

private:
    const char* functionName;  ///< borrowed; a name of static storage, such as __func__
};

}  // namespace cli::framework
