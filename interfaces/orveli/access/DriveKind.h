// Which of the two protocols a device takes commands of.
#pragma once

#include "core/Device.h"

namespace orvel::interfaces::orveli {

bool isNvme(const core::Device& device);
bool isAta(const core::Device& device);

}  // namespace orvel::interfaces::orveli
