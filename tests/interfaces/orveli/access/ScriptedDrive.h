// A drive that answers each command as it was told to, and keeps what it was sent.
#pragma once

#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/CoreStatuses.h"
#include "core/Device.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "features/DeviceAttributes.h"
#include "interfaces/orveli/interface/Job.h"
#include "protocols/ata/AtaCommand.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "protocols/nvme/AdminCommand.h"
#include "protocols/nvme/CompletionEntry.h"

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvel::interfaces::orveli {

/// What a drive answers: its words, its data, or the status of a path that can't reach it.
struct Reply {
    core::Payload data = {};
    std::uint32_t dword0 = 0;                        ///< NVMe
    protocols::nvme::StatusCode nvmeStatus = {};     ///< NVMe
    protocols::ata::ReturnedTaskFile returned = {};  ///< ATA; success unless told otherwise
    std::optional<core::Status> pathStatus = {};     ///< instead of an answer
};

struct SentNvme {
    protocols::nvme::AdminCommandFields fields;
    core::Payload input;
};

struct SentAta {
    protocols::ata::TaskFile taskFile;
    core::Payload input;
};

/// The commands are told apart by opcode and the low byte of dword 10, or by command, feature and
/// the low byte of the LBA. Several replies to one command are given in turn, the last for good.
/// Without a reply NVMe commands are refused with Invalid Command Opcode, ATA commands with ABRT.
class ScriptedDrive {
public:
    /// `commandSet` is nvme::ADMIN_COMMAND_SET or ata::AtaCommand::COMMAND_SET.
    explicit ScriptedDrive(const std::string& commandSet,
                           const std::string& serialNumber = "SERIAL1")
        : script(std::make_shared<Script>()),
          device(std::make_shared<core::Device>()) {
        device->addCommandPath(std::make_shared<Path>(script));
        device->addCommandSet(commandSet, PATH_NAME);
        core::Attribute serial = features::device_attributes::SerialNumber();
        serial.setValue(serialNumber);
        device->setAttribute(serial);
        core::Attribute index = features::device_attributes::Index();
        index.setValue(std::int32_t{0});
        device->setAttribute(index);
    }

    void onNvme(std::uint8_t opcode, std::uint8_t cdw10Low, std::deque<Reply> replies) {
        script->replies[{opcode, cdw10Low, 0}] = std::move(replies);
    }

    void onAta(std::uint8_t command, std::uint16_t feature, std::uint8_t lbaLow,
               std::deque<Reply> replies) {
        script->replies[{command, feature, lbaLow}] = std::move(replies);
    }

    /// What the path says of partitions; none unless told otherwise.
    void onPartitionCheck(core::Status status) { script->partitions = std::move(status); }

    /// As the identification finds it.
    void setNorvo(bool isNorvo) {
        core::Attribute maker = features::device_attributes::Norvo();
        maker.setValue(isNorvo);
        device->setAttribute(maker);
    }

    std::vector<SentNvme>& sentNvme() { return script->sentNvme; }

    std::vector<SentAta>& sentAta() { return script->sentAta; }

    const std::shared_ptr<core::Device>& getDevice() const { return device; }

    core::Device* operator->() { return device.get(); }

private:
    static constexpr const char* PATH_NAME = "script";

    struct Key {
        std::uint32_t code;
        std::uint32_t second;
        std::uint32_t third;
        auto operator<=>(const Key&) const = default;
    };

    struct Script {
        std::map<Key, std::deque<Reply>> replies;
        std::vector<SentNvme> sentNvme;
        std::vector<SentAta> sentAta;
        core::Status partitions = core::statuses::deviceHasNoPartitions();

        std::optional<Reply> next(const Key& key) {
            const auto found = replies.find(key);
            if (found == replies.end() || found->second.empty()) return std::nullopt;
            const Reply reply = found->second.front();
            if (found->second.size() > 1) found->second.pop_front();
            return reply;
        }
    };

    class Path : public core::CommandPath {
    public:
        explicit Path(std::shared_ptr<Script> script)
            : CommandPath(nullptr, PATH_NAME),
              script(std::move(script)) {}

        core::Status checkPartitions() override { return script->partitions; }

        std::unique_ptr<CommandPath> clone() const override {
            return std::make_unique<Path>(script);
        }

        bool isAvailable(core::Device&) override { return true; }

        core::CommandResult send(const core::Command& command, core::Payload input,
                                 core::Device&) override {
            core::CommandResult result;
            result.command = command.clone();
            result.inputPayload = input;
            if (const auto* nvme = dynamic_cast<const protocols::nvme::AdminCommand*>(&command)) {
                answer(nvme->getFields(), input, result);
            } else {
                answer(dynamic_cast<const protocols::ata::AtaCommand&>(command).getTaskFile(),
                       input, result);
            }
            return result;
        }

    private:
        void answer(const protocols::nvme::AdminCommandFields& fields, const core::Payload& input,
                    core::CommandResult& result) {
            script->sentNvme.push_back({fields, core::Payload(input.data(), input.size())});
            const auto reply = script->next({fields.opcode, fields.cdw10 & 0xFF, 0});
            auto completion = std::make_unique<protocols::nvme::CompletionEntry>();
            completion->status = reply ? reply->nvmeStatus : protocols::nvme::StatusCode{0, 1};
            if (reply && reply->pathStatus) {
                result.status = *reply->pathStatus;
                return;
            }
            if (reply) {
                completion->dword0 = reply->dword0;
                result.outputPayload = reply->data;
            }
            if (!completion->isSuccess()) result.status = core::statuses::nvmeCommandProblem();
            result.protocolResult = std::move(completion);
        }

        void answer(const protocols::ata::TaskFile& taskFile, const core::Payload& input,
                    core::CommandResult& result) {
            script->sentAta.push_back({taskFile, core::Payload(input.data(), input.size())});
            const auto reply = script->next({taskFile.command, taskFile.feature,
                                             static_cast<std::uint32_t>(taskFile.lba & 0xFF)});
            if (reply && reply->pathStatus) {
                result.status = *reply->pathStatus;
                return;
            }
            auto returned = std::make_unique<protocols::ata::ReturnedTaskFile>();
            if (reply) {
                *returned = reply->returned;
                if (returned->status == 0) returned->status = 0x50;
                result.outputPayload = reply->data;
            } else {
                returned->status = 0x51;
                returned->error = 0x04;
            }
            if (!returned->isSuccess()) result.status = core::statuses::ataCommandProblem();
            result.protocolResult = std::move(returned);
        }

        std::shared_ptr<Script> script;
    };

    std::shared_ptr<Script> script;
    std::shared_ptr<core::Device> device;
};

/// The list of a request that selects one drive; which one it is comes to the job by itself.
inline constexpr const char* ONE_DEVICE =
    R"(<List name="Devices"><Object name="Device"><Property name="Index" value="0"/></Object>)"
    R"(</List>)";

/// The outcome of a job that was given a request.
struct Outcome {
    core::Status status;
    std::string output;  ///< what comes back as XML; empty for none
};

inline Outcome runJob(Job& job, const std::string& request, const core::Device::Devices& devices) {
    job.setRequest(core::XmlConverter::toXml(request));
    job.setDevices(devices);
    std::unique_ptr<core::xml::XmlElement> response;
    Outcome outcome;
    outcome.status = job.run(response);
    if (response) {
        response->toXml(outcome.output);
    }
    return outcome;
}

}  // namespace orvel::interfaces::orveli
