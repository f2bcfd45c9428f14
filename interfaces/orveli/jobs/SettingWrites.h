// Settings of drives, for jobs: sent, and read back.
#pragma once

#include "core/Device.h"
#include "core/Status.h"
#include "protocols/ata/Sct.h"
#include "protocols/nvme/AdminCommands.h"

#include <cstdint>
#include <functional>
#include <string>

namespace orvel::interfaces::orveli::jobs::setting_writes {

// Each throws core::Status by value, the path's if no answer comes. Those that read back throw
// 10/164 for a drive that agreed and has another value all the same.

struct SctSetting {
    protocols::ata::sct::Feature feature;
    std::uint16_t state;
};

/// Outlasts power cycles. Throws 10/3 for a drive without SCT Feature Control, and `refusal` if the
/// drive refuses.
void set(core::Device& device, const SctSetting& setting, const core::Status& refusal);

/// As `set`, and reads the state back. Not for what shows after a power cycle only.
void setAndCheck(core::Device& device, const SctSetting& setting, const core::Status& refusal);

/// Saved if the drive can save this feature, so that it outlasts power cycles and resets; else it
/// holds until the next. Whatever `save` says counts nothing. Throws 0/25 with the drive's words if
/// it refuses.
void set(core::Device& device, protocols::nvme::FeatureChange change);

/// As `set`, and reads back the feature's dword, which must be that of the change.
void setAndCheck(core::Device& device, const protocols::nvme::FeatureChange& change);

/// Runs `send`, and throws a drive's refusal, 0/10 or 0/25, with `words` behind it: for what a
/// drive does not tell. Whatever else is thrown passes through.
void explainRefusal(const std::function<void()>& send, const std::string& words);

/// 10/164: the drive took the command and kept its value.
core::Status valueNotTaken();

}  // namespace orvel::interfaces::orveli::jobs::setting_writes
