#include "protocols/nvme/CompletionEntry.h"

#include "core/CoreStatuses.h"
#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "protocols/nvme/NamedValues.h"

namespace orvel::protocols::nvme {

namespace {

using core::strings::toHexString;
using core::strings::toString;

std::string bit(bool value) {
    return value ? "1" : "0";
}

NamedValues partsOf(const CompletionEntry& entry) {
    return {
        {"DW0", "0x" + toHexString(entry.dword0, 8)},
        {"DW1", "0x" + toHexString(entry.dword1, 8)},
        {"SQHD", toString(entry.submissionQueueHead)},
        {"SQID", toString(entry.submissionQueueId)},
        {"CID", toString(entry.commandId)},
        {"P", bit(entry.phase)},
        {"SCT", "0x" + toHexString(entry.status.type, 1)},
        {"SC", "0x" + toHexString(entry.status.code, 2)},
        {"CRD", toString(entry.retryDelay)},
        {"M", bit(entry.more)},
        {"DNR", bit(entry.doNotRetry)},
        {"Status", statusText(entry.status)},
    };
}

}  // namespace

CompletionEntry::CompletionEntry(const core::Payload& bytes) {
    using namespace completion_entry;
    if (bytes.size() < SIZE) throw core::statuses::notEnoughDataForNvmeCompletionEntry();
    dword0 = static_cast<std::uint32_t>(readNumber(bytes, DW0));
    dword1 = static_cast<std::uint32_t>(readNumber(bytes, DW1));
    submissionQueueHead = static_cast<std::uint16_t>(readNumber(bytes, SQHD));
    submissionQueueId = static_cast<std::uint16_t>(readNumber(bytes, SQID));
    commandId = static_cast<std::uint16_t>(readNumber(bytes, CID));
    phase = readBits(bytes, P_SF, p_sf::P) != 0;
    status.code = static_cast<std::uint8_t>(readBits(bytes, P_SF, p_sf::SC));
    status.type = static_cast<std::uint8_t>(readBits(bytes, P_SF, p_sf::SCT));
    retryDelay = static_cast<std::uint8_t>(readBits(bytes, P_SF, p_sf::CRD));
    more = readBits(bytes, P_SF, p_sf::M) != 0;
    doNotRetry = readBits(bytes, P_SF, p_sf::DNR) != 0;
}

core::Payload CompletionEntry::toBytes() const {
    using namespace completion_entry;
    core::Payload bytes(SIZE);
    writeNumber(bytes, DW0, dword0);
    writeNumber(bytes, DW1, dword1);
    writeNumber(bytes, SQHD, submissionQueueHead);
    writeNumber(bytes, SQID, submissionQueueId);
    writeNumber(bytes, CID, commandId);
    writeBits(bytes, P_SF, p_sf::P, phase ? 1 : 0);
    writeBits(bytes, P_SF, p_sf::SC, status.code);
    writeBits(bytes, P_SF, p_sf::SCT, status.type);
    writeBits(bytes, P_SF, p_sf::CRD, retryDelay);
    writeBits(bytes, P_SF, p_sf::M, more ? 1 : 0);
    writeBits(bytes, P_SF, p_sf::DNR, doNotRetry ? 1 : 0);
    return bytes;
}

std::unique_ptr<core::ProtocolResult> CompletionEntry::clone() const {
    return std::make_unique<CompletionEntry>(*this);
}

std::string CompletionEntry::toString() const {
    return toLines(partsOf(*this));
}

std::unique_ptr<core::xml::XmlElement> CompletionEntry::toXml() const {
    return toObject(core::xml::categories::ProtocolResult, partsOf(*this));
}

}  // namespace orvel::protocols::nvme
