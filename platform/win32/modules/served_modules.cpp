#include "served_modules.h"

#include <atomic>

#include "../text/case_fold.h"

namespace kawin {
namespace {

struct Node {
    const ServedModule* module;
    const Node* next;
};
constinit std::atomic<const Node*> served{nullptr};  // grows at the front only; nodes stay for ever

}  // namespace

void ServeModule(const ServedModule& module) {
    auto* const node = new Node{&module, served.load(std::memory_order_relaxed)};
    while (!served.compare_exchange_weak(node->next, node, std::memory_order_release, std::memory_order_relaxed)) {
    }
}

const ServedModule* FindServedModule(std::u16string_view name) noexcept {
    for (const Node* node = served.load(std::memory_order_acquire); node != nullptr; node = node->next) {
        if (CompareFolded(node->module->name, name) == 0) {
            return node->module;
        }
    }
    return nullptr;
}

}  // namespace kawin
