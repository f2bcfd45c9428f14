// Tests of the names of protocols, drive families and firmware audiences.
#include "features/ProductIdentifiers.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

namespace orvel::features::product_identifiers::norvo_ssd {
namespace {

struct WordRow {
    std::string constant;
    const char* text;
};

template <std::size_t Size>
void expectWords(const WordRow (&rows)[Size]) {
    for (const WordRow& row : rows) {
        EXPECT_EQ(row.constant, row.text);
    }
}

TEST(ProductIdentifiers, NameTheProtocols) {
    // clang-format off
    const WordRow rows[] = {
        {protocols::ATA,  "ATA"},
        {protocols::NVME, "NVME"},
        {protocols::SCSI, "SCSI"},
        {protocols::QMR,  "QMR"},
        {protocols::UART, "UART"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 5U);
    expectWords(rows);
}

TEST(ProductIdentifiers, NameTheDriveFamilies) {
    // clang-format off
    const WordRow rows[] = {
        {products::Aldermoor,         "Aldermoor"},
        {products::Aldermoor_Reach,   "Aldermoor Reach"},
        {products::Amberwick,         "Amberwick"},
        {products::Ashlade,           "Ashlade"},
        {products::Averholm,          "Averholm"},
        {products::Barrowfen,         "Barrowfen"},
        {products::Bexmere,           "Bexmere"},
        {products::Birchlade,         "Birchlade"},
        {products::Brackenway,        "Brackenway"},
        {products::Brackenway_Point,  "Brackenway Point"},
        {products::Bramholt,          "Bramholt"},
        {products::Brenwick,          "Brenwick"},
        {products::Caldermere,        "Caldermere"},
        {products::Calverstow,        "Calverstow"},
        {products::Carrowby,          "Carrowby"},
        {products::Cindermoor,        "Cindermoor"},
        {products::Cobblegate,        "Cobblegate"},
        {products::Cobblegate_Reach,  "Cobblegate Reach"},
        {products::Corvenholt,        "Corvenholt"},
        {products::Crosswick,         "Crosswick"},
        {products::Dapplemere,        "Dapplemere"},
        {products::Darrowstead,       "Darrowstead"},
        {products::Deepholm,          "Deepholm"},
        {products::Dunmarsh,          "Dunmarsh"},
        {products::Dunmarsh_Point,    "Dunmarsh Point"},
        {products::Eldermoor,         "Eldermoor"},
        {products::Elmstow,           "Elmstow"},
        {products::Emberlade,         "Emberlade"},
        {products::Everwick,          "Everwick"},
        {products::Fallowmere,        "Fallowmere"},
        {products::Farrowgate,        "Farrowgate"},
        {products::Fenholt,           "Fenholt"},
        {products::Fernstead,         "Fernstead"},
        {products::Fernstead_Reach,   "Fernstead Reach"},
        {products::Foxlade,           "Foxlade"},
        {products::Galemoor,          "Galemoor"},
        {products::Garrowby,          "Garrowby"},
        {products::Glimmerholm,       "Glimmerholm"},
        {products::Gorsewick,         "Gorsewick"},
        {products::Graymere,          "Graymere"},
        {products::Graymere_Point,    "Graymere Point"},
        {products::Hallowstow,        "Hallowstow"},
        {products::Harrowmere,        "Harrowmere"},
        {products::Hazelholt,         "Hazelholt"},
        {products::Heathergate,       "Heathergate"},
        {products::Hollowmarsh,       "Hollowmarsh"},
        {products::Inglemoor,         "Inglemoor"},
        {products::Inglemoor_Reach,   "Inglemoor Reach"},
        {products::Ironlade,          "Ironlade"},
        {products::Ivystead,          "Ivystead"},
        {products::Jasperholm,        "Jasperholm"},
        {products::Juniperwick,       "Juniperwick"},
        {products::Kelmarsh,          "Kelmarsh"},
        {products::Kestrelgate,       "Kestrelgate"},
        {products::Kindlewold,        "Kindlewold"},
        {products::Larkmoor,          "Larkmoor"},
        {products::Larkmoor_Point,    "Larkmoor Point"},
        {products::Lavenstow,         "Lavenstow"},
        {products::Lindermere,        "Lindermere"},
        {products::Lowholt,           "Lowholt"},
        {products::Maplewold,         "Maplewold"},
        {products::Marlgate,          "Marlgate"},
        {products::Marrowby,          "Marrowby"},
        {products::Meadowlade,        "Meadowlade"},
        {products::Merrowstead,       "Merrowstead"},
        {products::Merrowstead_Reach, "Merrowstead Reach"},
        {products::Mistholm,          "Mistholm"},
        {products::Mossgate,          "Mossgate"},
        {products::Netherwold,        "Netherwold"},
        {products::Nightmarsh,        "Nightmarsh"},
        {products::Oakenstow,         "Oakenstow"},
        {products::Oatholm,           "Oatholm"},
        {products::Orrismere,         "Orrismere"},
        {products::Orrismere_Point,   "Orrismere Point"},
        {products::Otterlade,         "Otterlade"},
        {products::Pebblewick,        "Pebblewick"},
        {products::Pennymarsh,        "Pennymarsh"},
        {products::Pinegate,          "Pinegate"},
        {products::Quarrowby,         "Quarrowby"},
        {products::Quillbrook,        "Quillbrook"},
        {products::Quillbrook_Reach,  "Quillbrook Reach"},
        {products::Ravenstow,         "Ravenstow"},
        {products::Reedholt,          "Reedholt"},
        {products::Rookmoor,          "Rookmoor"},
        {products::Rowanlade,         "Rowanlade"},
        {products::Rushmarsh,         "Rushmarsh"},
        {products::Sablewold,         "Sablewold"},
        {products::Saltergate,        "Saltergate"},
        {products::Sedgeholm,         "Sedgeholm"},
        {products::Sedgeholm_Point,   "Sedgeholm Point"},
        {products::Silvermoor,        "Silvermoor"},
        {products::Sorrelstead,       "Sorrelstead"},
        {products::Swanlade,          "Swanlade"},
        {products::Tarrowby,          "Tarrowby"},
        {products::Tealmarsh,         "Tealmarsh"},
        {products::Thistlewick,       "Thistlewick"},
        {products::Thornwold,         "Thornwold"},
        {products::Umberholt,         "Umberholt"},
        {products::Vesperlade,        "Vesperlade"},
        {products::Wendermoor,        "Wendermoor"},
        {products::Wrenstow,          "Wrenstow"},
        {products::Yarrowgate,        "Yarrowgate"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 102U);
    expectWords(rows);
}

TEST(ProductIdentifiers, NameTheFirmwareAudiences) {
    // clang-format off
    const WordRow rows[] = {
        {oems::Generic,   "Generic"},
        {oems::Arvanto,   "Arvanto"},
        {oems::Belcorin,  "Belcorin"},
        {oems::Calvexa,   "Calvexa"},
        {oems::Dorvane,   "Dorvane"},
        {oems::Elmaris,   "Elmaris"},
        {oems::Fenwright, "Fenwright"},
        {oems::Gantrel,   "Gantrel"},
        {oems::Halvorix,  "Halvorix"},
        {oems::Irimar,    "Irimar"},
        {oems::Jorvane,   "Jorvane"},
        {oems::Kestrix,   "Kestrix"},
        {oems::Lumarel,   "Lumarel"},
        {oems::Morvane,   "Morvane"},
        {oems::Ostrevel,  "Ostrevel"},
        {oems::Pelmarin,  "Pelmarin"},
        {oems::Quorvex,   "Quorvex"},
        {oems::Rendalis,  "Rendalis"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 18U);
    expectWords(rows);
}

}  // namespace
}  // namespace orvel::features::product_identifiers::norvo_ssd
