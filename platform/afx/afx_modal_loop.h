#pragma once

// The state of a modal loop. Not for hosts.

// It lives with who runs the loop, not with the window: the window's object may end inside of it.
struct AfxModalLoop {
    int result = -1;
    bool ended = false;
    bool lost = false;  // the window or its object has ended
};
