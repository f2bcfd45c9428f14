// Names of drive protocols, drive families and firmware audiences.
#pragma once

// clang-format off
namespace orvel::features::product_identifiers::norvo_ssd {

namespace protocols {

inline constexpr const char* ATA  = "ATA";
inline constexpr const char* NVME = "NVME";
inline constexpr const char* SCSI = "SCSI";
inline constexpr const char* QMR  = "QMR";
inline constexpr const char* UART = "UART";

}  // namespace protocols

namespace products {

// The maker's drive families, 102 of them, by code name. A blank is a "_" in the constant.
inline constexpr const char* Aldermoor         = "Aldermoor";
inline constexpr const char* Aldermoor_Reach   = "Aldermoor Reach";
inline constexpr const char* Amberwick         = "Amberwick";
inline constexpr const char* Ashlade           = "Ashlade";
inline constexpr const char* Averholm          = "Averholm";
inline constexpr const char* Barrowfen         = "Barrowfen";
inline constexpr const char* Bexmere           = "Bexmere";
inline constexpr const char* Birchlade         = "Birchlade";
inline constexpr const char* Brackenway        = "Brackenway";
inline constexpr const char* Brackenway_Point  = "Brackenway Point";
inline constexpr const char* Bramholt          = "Bramholt";
inline constexpr const char* Brenwick          = "Brenwick";
inline constexpr const char* Caldermere        = "Caldermere";
inline constexpr const char* Calverstow        = "Calverstow";
inline constexpr const char* Carrowby          = "Carrowby";
inline constexpr const char* Cindermoor        = "Cindermoor";
inline constexpr const char* Cobblegate        = "Cobblegate";
inline constexpr const char* Cobblegate_Reach  = "Cobblegate Reach";
inline constexpr const char* Corvenholt        = "Corvenholt";
inline constexpr const char* Crosswick         = "Crosswick";
inline constexpr const char* Dapplemere        = "Dapplemere";
inline constexpr const char* Darrowstead       = "Darrowstead";
inline constexpr const char* Deepholm          = "Deepholm";
inline constexpr const char* Dunmarsh          = "Dunmarsh";
inline constexpr const char* Dunmarsh_Point    = "Dunmarsh Point";
inline constexpr const char* Eldermoor         = "Eldermoor";
inline constexpr const char* Elmstow           = "Elmstow";
inline constexpr const char* Emberlade         = "Emberlade";
inline constexpr const char* Everwick          = "Everwick";
inline constexpr const char* Fallowmere        = "Fallowmere";
inline constexpr const char* Farrowgate        = "Farrowgate";
inline constexpr const char* Fenholt           = "Fenholt";
inline constexpr const char* Fernstead         = "Fernstead";
inline constexpr const char* Fernstead_Reach   = "Fernstead Reach";
inline constexpr const char* Foxlade           = "Foxlade";
inline constexpr const char* Galemoor          = "Galemoor";
inline constexpr const char* Garrowby          = "Garrowby";
inline constexpr const char* Glimmerholm       = "Glimmerholm";
inline constexpr const char* Gorsewick         = "Gorsewick";
inline constexpr const char* Graymere          = "Graymere";
inline constexpr const char* Graymere_Point    = "Graymere Point";
inline constexpr const char* Hallowstow        = "Hallowstow";
inline constexpr const char* Harrowmere        = "Harrowmere";
inline constexpr const char* Hazelholt         = "Hazelholt";
inline constexpr const char* Heathergate       = "Heathergate";
inline constexpr const char* Hollowmarsh       = "Hollowmarsh";
inline constexpr const char* Inglemoor         = "Inglemoor";
inline constexpr const char* Inglemoor_Reach   = "Inglemoor Reach";
inline constexpr const char* Ironlade          = "Ironlade";
inline constexpr const char* Ivystead          = "Ivystead";
inline constexpr const char* Jasperholm        = "Jasperholm";
inline constexpr const char* Juniperwick       = "Juniperwick";
inline constexpr const char* Kelmarsh          = "Kelmarsh";
inline constexpr const char* Kestrelgate       = "Kestrelgate";
inline constexpr const char* Kindlewold        = "Kindlewold";
inline constexpr const char* Larkmoor          = "Larkmoor";
inline constexpr const char* Larkmoor_Point    = "Larkmoor Point";
inline constexpr const char* Lavenstow         = "Lavenstow";
inline constexpr const char* Lindermere        = "Lindermere";
inline constexpr const char* Lowholt           = "Lowholt";
inline constexpr const char* Maplewold         = "Maplewold";
inline constexpr const char* Marlgate          = "Marlgate";
inline constexpr const char* Marrowby          = "Marrowby";
inline constexpr const char* Meadowlade        = "Meadowlade";
inline constexpr const char* Merrowstead       = "Merrowstead";
inline constexpr const char* Merrowstead_Reach = "Merrowstead Reach";
inline constexpr const char* Mistholm          = "Mistholm";
inline constexpr const char* Mossgate          = "Mossgate";
inline constexpr const char* Netherwold        = "Netherwold";
inline constexpr const char* Nightmarsh        = "Nightmarsh";
inline constexpr const char* Oakenstow         = "Oakenstow";
inline constexpr const char* Oatholm           = "Oatholm";
inline constexpr const char* Orrismere         = "Orrismere";
inline constexpr const char* Orrismere_Point   = "Orrismere Point";
inline constexpr const char* Otterlade         = "Otterlade";
inline constexpr const char* Pebblewick        = "Pebblewick";
inline constexpr const char* Pennymarsh        = "Pennymarsh";
inline constexpr const char* Pinegate          = "Pinegate";
inline constexpr const char* Quarrowby         = "Quarrowby";
inline constexpr const char* Quillbrook        = "Quillbrook";
inline constexpr const char* Quillbrook_Reach  = "Quillbrook Reach";
inline constexpr const char* Ravenstow         = "Ravenstow";
inline constexpr const char* Reedholt          = "Reedholt";
inline constexpr const char* Rookmoor          = "Rookmoor";
inline constexpr const char* Rowanlade         = "Rowanlade";
inline constexpr const char* Rushmarsh         = "Rushmarsh";
inline constexpr const char* Sablewold         = "Sablewold";
inline constexpr const char* Saltergate        = "Saltergate";
inline constexpr const char* Sedgeholm         = "Sedgeholm";
inline constexpr const char* Sedgeholm_Point   = "Sedgeholm Point";
inline constexpr const char* Silvermoor        = "Silvermoor";
inline constexpr const char* Sorrelstead       = "Sorrelstead";
inline constexpr const char* Swanlade          = "Swanlade";
inline constexpr const char* Tarrowby          = "Tarrowby";
inline constexpr const char* Tealmarsh         = "Tealmarsh";
inline constexpr const char* Thistlewick       = "Thistlewick";
inline constexpr const char* Thornwold         = "Thornwold";
inline constexpr const char* Umberholt         = "Umberholt";
inline constexpr const char* Vesperlade        = "Vesperlade";
inline constexpr const char* Wendermoor        = "Wendermoor";
inline constexpr const char* Wrenstow          = "Wrenstow";
inline constexpr const char* Yarrowgate        = "Yarrowgate";

}  // namespace products

namespace oems {

// Audiences that a firmware module is made for.
inline constexpr const char* Generic   = "Generic";
inline constexpr const char* Arvanto   = "Arvanto";
inline constexpr const char* Belcorin  = "Belcorin";
inline constexpr const char* Calvexa   = "Calvexa";
inline constexpr const char* Dorvane   = "Dorvane";
inline constexpr const char* Elmaris   = "Elmaris";
inline constexpr const char* Fenwright = "Fenwright";
inline constexpr const char* Gantrel   = "Gantrel";
inline constexpr const char* Halvorix  = "Halvorix";
inline constexpr const char* Irimar    = "Irimar";
inline constexpr const char* Jorvane   = "Jorvane";
inline constexpr const char* Kestrix   = "Kestrix";
inline constexpr const char* Lumarel   = "Lumarel";
inline constexpr const char* Morvane   = "Morvane";
inline constexpr const char* Ostrevel  = "Ostrevel";
inline constexpr const char* Pelmarin  = "Pelmarin";
inline constexpr const char* Quorvex   = "Quorvex";
inline constexpr const char* Rendalis  = "Rendalis";

}  // namespace oems

}  // namespace orvel::features::product_identifiers::norvo_ssd

// clang-format on
