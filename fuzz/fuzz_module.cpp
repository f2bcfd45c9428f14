// The bytes of a firmware module to what is to be known of it.

#include "fuzz/FuzzSupport.h"
#include "interfaces/orveli/firmware_modules/FirmwareModule.h"

#include <cstdint>
#include <string_view>

namespace {

namespace fuzz = tavik::fuzz;
using orvel::interfaces::orveli::FirmwareModule;

void checkGood(const FirmwareModule& module, std::string_view bytes) {
    constexpr std::size_t LONGEST_PRODUCT = 64;
    constexpr std::size_t LONGEST_VERSION = 8;
    fuzz::require(!module.product.empty() && module.product.size() <= LONGEST_PRODUCT,
                  "a good module is for a product");
    fuzz::require(!module.version.empty() && module.version.size() <= LONGEST_VERSION,
                  "a good module has a version");
    fuzz::require(!module.audience.empty(), "a good module has an audience");
    fuzz::require(module.image.size() > 0 && module.image.size() <= FirmwareModule::MAX_IMAGE,
                  "a good module has an image");
    const std::string_view image(reinterpret_cast<const char*>(module.image.data()),
                                 module.image.size());
    fuzz::require(bytes.ends_with(image), "the image is the end of the file");
    fuzz::require(bytes.size() - image.size() <= FirmwareModule::MAX_HEADER,
                  "the rest is the header");
}

void checkDamaged(const FirmwareModule& module) {
    fuzz::require(module.image.size() == 0, "a damaged module has no image to send");
    for (const char character : module.damage)
        fuzz::require(character >= ' ' && character <= '~', "a reason is one line");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::textOf(data, size);
    const FirmwareModule module = FirmwareModule::parse(bytes);
    if (module.damage.empty())
        checkGood(module, bytes);
    else
        checkDamaged(module);
    return 0;
}
