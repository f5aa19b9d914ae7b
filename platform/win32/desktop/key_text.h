#pragma once

// What a key types when nobody else tells: a keyboard of the United States.

#include <array>
#include <string>

#include "../base/types.h"

namespace kawin {

// For the keys that are down then (256 bytes of 0x80 and 0x01). Empty for a key without a character.
std::u16string TextOfKey(int key, const std::array<BYTE, 256>& keys);

}  // namespace kawin
