#pragma once

#include <memory>

namespace kawin {

class BitmapObject;
class DrawingContext;

// The memory context draws on `bitmap` from now on; the one before is free for others. False, nothing changed, when it is null or
// another context draws on it.
bool SelectBitmap(DrawingContext& context, std::shared_ptr<BitmapObject> bitmap) noexcept;

// The bitmap is free for others.
void ReleaseBitmap(DrawingContext& context) noexcept;

}  // namespace kawin
