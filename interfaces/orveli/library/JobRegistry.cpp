#include "interfaces/orveli/library/JobRegistry.h"

#include <utility>

namespace orvel::interfaces::orveli::library {

void JobRegistry::add(std::unique_ptr<Job> job) {
    const std::string name = job->getName();
    jobs.insert_or_assign(name, std::move(job));
}

std::unique_ptr<Job> JobRegistry::make(const std::string& name) const {
    const auto found = jobs.find(name);
    return found == jobs.end() ? nullptr : found->second->clone();
}

}  // namespace orvel::interfaces::orveli::library
