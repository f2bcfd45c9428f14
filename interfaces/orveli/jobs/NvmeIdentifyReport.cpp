#include "interfaces/orveli/jobs/NvmeIdentifyReport.h"

#include "core/Strings.h"
#include "interfaces/orveli/jobs/DriveJob.h"
#include "interfaces/orveli/jobs/FieldReport.h"
#include "protocols/norvo/Structures.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::xml::XmlObject;
using protocols::Field;
using protocols::Fields;
using protocols::nvme::BitField;
namespace nvme = protocols::nvme;

namespace {

/// How a structure's fields are shown, apart from plain values.
enum class Form {
    BITS,  ///< in hexadecimal, and the bits of a group one by one
    HEX,   ///< in hexadecimal
    NONE   ///< not here: shown in sections, or the vendor's bytes
};

struct FormRow {
    Field field;
    Form form;
    std::string_view group = {};  ///< of StructureBits.def
};

// clang-format off
constexpr FormRow CONTROLLER_FORMS[] = {
    {nvme::identify_controller::VID,     Form::HEX},
    {nvme::identify_controller::SSVID,   Form::HEX},
    {nvme::identify_controller::IEEE,    Form::HEX},
    {nvme::identify_controller::CMIC,    Form::BITS, "cmic"},
    {nvme::identify_controller::VER,     Form::BITS, "version"},
    {nvme::identify_controller::OAES,    Form::BITS, "oaes"},
    {nvme::identify_controller::CTRATT,  Form::BITS, "ctratt"},
    {nvme::identify_controller::RRLS,    Form::HEX},
    {nvme::identify_controller::NVMSR,   Form::BITS, "nvmsr"},
    {nvme::identify_controller::VWCI,    Form::BITS, "vwci"},
    {nvme::identify_controller::MEC,     Form::BITS, "mec"},
    {nvme::identify_controller::OACS,    Form::BITS, "oacs"},
    {nvme::identify_controller::FRMW,    Form::BITS, "frmw"},
    {nvme::identify_controller::LPA,     Form::BITS, "lpa"},
    {nvme::identify_controller::AVSCC,   Form::BITS, "avscc"},
    {nvme::identify_controller::APSTA,   Form::BITS, "apsta"},
    {nvme::identify_controller::RPMBS,   Form::BITS, "rpmbs"},
    {nvme::identify_controller::DSTO,    Form::BITS, "dsto"},
    {nvme::identify_controller::HCTMA,   Form::BITS, "hctma"},
    {nvme::identify_controller::SANICAP, Form::BITS, "sanicap"},
    {nvme::identify_controller::ANACAP,  Form::BITS, "anacap"},
    {nvme::identify_controller::SQES,    Form::BITS, "sqes"},
    {nvme::identify_controller::CQES,    Form::BITS, "cqes"},
    {nvme::identify_controller::ONCS,    Form::BITS, "oncs"},
    {nvme::identify_controller::FUSES,   Form::BITS, "fuses"},
    {nvme::identify_controller::FNA,     Form::BITS, "fna"},
    {nvme::identify_controller::VWC,     Form::BITS, "vwc"},
    {nvme::identify_controller::NVSCC,   Form::BITS, "nvscc"},
    {nvme::identify_controller::NWPC,    Form::BITS, "nwpc"},
    {nvme::identify_controller::SGLS,    Form::BITS, "sgls"},
    {nvme::identify_controller::PSD,     Form::NONE},
    {nvme::identify_controller::VS,      Form::NONE},
};

constexpr FormRow POWER_STATE_FORMS[] = {
    {nvme::power_state_descriptor::MXPS_NOPS, Form::BITS, "mxps_nops"},
    {nvme::power_state_descriptor::RRT,       Form::BITS, "rrt"},
    {nvme::power_state_descriptor::RRL,       Form::BITS, "rrl"},
    {nvme::power_state_descriptor::RWT,       Form::BITS, "rwt"},
    {nvme::power_state_descriptor::RWL,       Form::BITS, "rwl"},
    {nvme::power_state_descriptor::IPS,       Form::BITS, "ips"},
    {nvme::power_state_descriptor::APW_APS,   Form::BITS, "apw_aps"},
};

constexpr FormRow NAMESPACE_FORMS[] = {
    {nvme::identify_namespace::NSFEAT, Form::BITS, "nsfeat"},
    {nvme::identify_namespace::FLBAS,  Form::BITS, "flbas"},
    {nvme::identify_namespace::MC,     Form::BITS, "mc"},
    {nvme::identify_namespace::DPC,    Form::BITS, "dpc"},
    {nvme::identify_namespace::DPS,    Form::BITS, "dps"},
    {nvme::identify_namespace::NMIC,   Form::BITS, "nmic"},
    {nvme::identify_namespace::RESCAP, Form::BITS, "rescap"},
    {nvme::identify_namespace::FPI,    Form::BITS, "fpi"},
    {nvme::identify_namespace::DLFEAT, Form::BITS, "dlfeat"},
    {nvme::identify_namespace::NSATTR, Form::BITS, "nsattr"},
    {nvme::identify_namespace::LBAF,   Form::NONE},
    {nvme::identify_namespace::VS,     Form::NONE},
};

constexpr FormRow LBA_FORMAT_FORMS[] = {
    {nvme::lba_format::RP, Form::BITS, "rp"},
};

// clang-format on

struct GroupedBits {
    std::string_view group;
    BitField bits;
};

constexpr GroupedBits ALL_BITS[] = {
#define BITS(group, name, lowBit, bits, meaning) {#group, {#name, meaning, lowBit, bits}},
#include "protocols/nvme/StructureBits.def"
};

std::vector<BitField> bitsOf(std::string_view group) {
    std::vector<BitField> rows;
    for (const GroupedBits& row : ALL_BITS) {
        if (row.group == group) rows.push_back(row.bits);
    }
    return rows;
}

/// A row of Field's tables and of the forms', which are told by their place.
const FormRow* formOf(std::span<const FormRow> forms, const Field& field) {
    const auto found = std::find_if(forms.begin(), forms.end(), [&](const FormRow& row) {
        return row.field.offset == field.offset;
    });
    return found == forms.end() ? nullptr : &*found;
}

void putStructure(XmlObject& section, const Payload& structure, Fields fields,
                  std::span<const FormRow> forms) {
    for (const Field& field : fields) {
        const FormRow* form = formOf(forms, field);
        if (form == nullptr) {
            field_report::putDescribed(section, structure, field);
        } else if (form->form != Form::NONE) {
            section.addProperty(field.name, field.meaning, field_report::hexText(structure, field));
            field_report::putBits(section, structure, field, bitsOf(form->group));
        }
    }
}

}  // namespace

void putController(XmlObject& section, const Payload& structure) {
    namespace controller = nvme::identify_controller;
    putStructure(section, structure, controller::ALL, CONTROLLER_FORMS);
    for (const Field& field : protocols::norvo::identify_controller::ALL)
        field_report::putDescribed(section, structure, field);
    section.addValue(VENDOR_BYTES, protocols::valueAsText(structure, controller::VS));
    const auto last =
        static_cast<std::uint32_t>(protocols::readNumber(structure, controller::NPSS));
    for (std::uint32_t i = 0; i < controller::POWER_STATES.count && i <= last; ++i) {
        putStructure(addSection(section, "PowerState", core::strings::toString(i)),
                     protocols::readEntry(structure, controller::POWER_STATES, i),
                     nvme::power_state_descriptor::ALL, POWER_STATE_FORMS);
    }
}

void putNamespace(XmlObject& section, const Payload& structure) {
    namespace fields = nvme::identify_namespace;
    putStructure(section, structure, fields::ALL, NAMESPACE_FORMS);
    section.addValue(VENDOR_BYTES, protocols::valueAsText(structure, fields::VS));
    const auto last = static_cast<std::uint32_t>(protocols::readNumber(structure, fields::NLBAF));
    for (std::uint32_t i = 0; i < fields::LBA_FORMATS.count && i <= last; ++i) {
        putStructure(addSection(section, "LBAFormat", core::strings::toString(i)),
                     protocols::readEntry(structure, fields::LBA_FORMATS, i), nvme::lba_format::ALL,
                     LBA_FORMAT_FORMS);
    }
}

}  // namespace orvel::interfaces::orveli::jobs
