#include "protocols/nvme/Structures.h"

#include "core/CoreStatuses.h"

namespace orvel::protocols::nvme {

namespace {

/// The place of one identifier, which is all that an entry of these lists consists of.
Field identifier(const Entries& entries, std::uint32_t index) {
    return fieldOf(entries, index, {"Identifier", "", 0, entries.size, Encoding::NUMBER});
}

template <class Identifier>
void writeIdentifiers(const core::Payload& list, const Entries& entries,
                      std::span<const Identifier> identifiers) {
    if (identifiers.size() > entries.count) throw core::statuses::invalidArguments();
    std::uint32_t index = 0;
    for (const Identifier value : identifiers)
        writeNumber(list, identifier(entries, index++), value);
}

}  // namespace

std::vector<std::uint32_t> readNamespaceList(const core::Payload& list) {
    std::vector<std::uint32_t> identifiers;
    for (std::uint32_t i = 0; i < namespace_list::IDENTIFIERS.count; ++i) {
        const std::uint64_t value = readNumber(list, identifier(namespace_list::IDENTIFIERS, i));
        if (value == 0) break;
        identifiers.push_back(static_cast<std::uint32_t>(value));
    }
    return identifiers;
}

core::Payload makeNamespaceList(std::span<const std::uint32_t> identifiers) {
    core::Payload list(namespace_list::SIZE);
    writeIdentifiers(list, namespace_list::IDENTIFIERS, identifiers);
    return list;
}

std::vector<std::uint16_t> readControllerList(const core::Payload& list) {
    std::vector<std::uint16_t> identifiers;
    const std::uint64_t count = readNumber(list, controller_list::NumberOfIdentifiers);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t value = readNumber(list, identifier(controller_list::IDENTIFIERS, i));
        identifiers.push_back(static_cast<std::uint16_t>(value));
    }
    return identifiers;
}

core::Payload makeControllerList(std::span<const std::uint16_t> identifiers) {
    core::Payload list(controller_list::SIZE);
    writeIdentifiers(list, controller_list::IDENTIFIERS, identifiers);
    writeNumber(list, controller_list::NumberOfIdentifiers, identifiers.size());
    return list;
}

core::Payload makeNewNamespace(const NewNamespace& wanted) {
    using namespace namespace_management;
    core::Payload structure(SIZE);
    writeNumber(structure, NSZE, wanted.size);
    writeNumber(structure, NCAP, wanted.capacity);
    writeNumber(structure, FLBAS, wanted.formattedLbaSize);
    writeNumber(structure, DPS, wanted.dataProtection);
    writeNumber(structure, NMIC, wanted.sharing);
    writeNumber(structure, ANAGRPID, wanted.anaGroup);
    writeNumber(structure, NVMSETID, wanted.nvmSet);
    return structure;
}

}  // namespace orvel::protocols::nvme
