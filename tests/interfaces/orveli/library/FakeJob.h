// A job that answers as it is told, for tests of what stands around jobs.
#pragma once

#include "interfaces/orveli/interface/Job.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace orvel::interfaces::orveli::library {

class FakeJob : public Job {
public:
    using Action =
        std::function<core::Status(const Job& job, std::unique_ptr<core::xml::XmlElement>&)>;

    FakeJob(const std::string& name, Action action) : Job(name), action(std::move(action)) {}

    std::unique_ptr<Job> clone() const override {
        auto copy = std::make_unique<FakeJob>(getName(), action);
        copy->assign(*this);
        return copy;
    }

    bool supports(const core::Device&) const override { return true; }

    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override {
        return action(*this, response);
    }

private:
    Action action;
};

}  // namespace orvel::interfaces::orveli::library
