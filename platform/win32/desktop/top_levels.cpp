// What a display is shown of the windows.

#include "display.h"
#include "tree_walk.h"

namespace kawin {

std::vector<TopLevel> SnapshotTopLevels() {
    const DesktopLock desktop;
    std::vector<TopLevel> list;
    for (const Window* const each : desktop->root->children) {
        TopLevel top;
        top.window = each->handle;
        top.owner = desktop.Look(each->owner) != nullptr ? each->owner : nullptr;
        top.rect = each->rect;
        top.visible = each->IsVisible() || each->frozen;
        top.iconic = (each->style & WS_MINIMIZE) != 0;
        top.zoomed = (each->style & WS_MAXIMIZE) != 0;
        top.enabled = (each->style & WS_DISABLED) == 0;
        top.topmost = (each->extended_style & WS_EX_TOPMOST) != 0;
        top.tool = (each->extended_style & WS_EX_TOOLWINDOW) != 0;
        top.thread = each->thread;
        top.title = each->text;
        top.surface = each->surface;
        list.push_back(std::move(top));
    }
    return list;
}

}  // namespace kawin
