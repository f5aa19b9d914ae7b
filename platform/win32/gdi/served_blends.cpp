#include "served_blends.h"

#include "copies.h"

namespace kawin {

std::span<const ServedFunction> ServedBlendFunctions() {
    static const ServedFunction functions[] = {
        {"AlphaBlend", AddressOf(AlphaBlend)},
        {"GradientFill", AddressOf(GradientFill)},
        {"TransparentBlt", AddressOf(TransparentBlt)},
    };
    return functions;
}

}  // namespace kawin
