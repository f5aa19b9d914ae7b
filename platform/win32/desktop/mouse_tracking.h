#pragma once

// TrackMouseEvent's inside. Without the lock held.

#include "pointer_target.h"

namespace kawin {

// The pointer moves on a window: what it leaves is told, and hovering begins anew.
void NoteMove(ThreadQueue& queue, const PointerTarget& target, POINT screen);

}  // namespace kawin
