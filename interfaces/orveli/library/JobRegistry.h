// The jobs that a feature library has, by name.
#pragma once

#include "interfaces/orveli/interface/Job.h"

#include <map>
#include <memory>
#include <string>

namespace orvel::interfaces::orveli::library {

/// Holds one of each and makes others after it. Filled once; then any thread may `make`.
class JobRegistry {
public:
    /// Replaces a job of the same name.
    void add(std::unique_ptr<Job> job);

    /// A new job, or null if there is none of this name.
    std::unique_ptr<Job> make(const std::string& name) const;

private:
    std::map<std::string, std::unique_ptr<Job>> jobs;
};

}  // namespace orvel::interfaces::orveli::library
