#pragma once

// How objects are found by the handles of the system that they wrap. Not for hosts.

#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace afx {

// The objects of one kind of handle. HandleMember is the member that holds it.
//
// Permanent objects were attached by somebody, who destroys them; there is one list of them for the process, so that an object
// may be detached or destroyed by another thread than the one that attached it, and also while the process ends. Temporary
// objects were made for a handle without one; each thread has its own, and destroying them leaves the handle alone.
template <class Object, auto HandleMember>
class HandleMap {
public:
    // The handle becomes the object's. False for null and when the object has one already.
    template <class Handle>
    static bool Attach(Object& object, Handle handle) {
        if (handle == nullptr || object.*HandleMember != nullptr) {
            return false;
        }
        Permanent& permanent = ThePermanent();
        const std::scoped_lock lock(permanent.mutex);
        permanent.objects.insert_or_assign(handle, &object);
        object.*HandleMember = handle;
        return true;
    }

    // The handle, which is the caller's now; null when there was none.
    static auto Detach(Object& object) {
        Permanent& permanent = ThePermanent();
        const std::scoped_lock lock(permanent.mutex);
        const auto found = permanent.objects.find(object.*HandleMember);
        if (found != permanent.objects.end() && found->second == &object) {
            permanent.objects.erase(found);
        }
        return std::exchange(object.*HandleMember, nullptr);
    }

    // Null when there is none.
    static Object* FindPermanent(void* handle) {
        Permanent& permanent = ThePermanent();
        const std::scoped_lock lock(permanent.mutex);
        const auto found = permanent.objects.find(handle);
        return found != permanent.objects.end() ? found->second : nullptr;
    }

    static Object* FindTemporary(void* handle) {
        const auto& current = TheTemporary().current;
        const auto found = current.find(handle);
        return found != current.end() ? found->second : nullptr;
    }

    // The handle's object, a new temporary one where it has none. Null for null.
    template <class Handle>
    static Object* FromHandle(Handle handle) {
        if (handle == nullptr) {
            return nullptr;
        }
        if (Object* const permanent = FindPermanent(handle)) {
            return permanent;
        }
        Object* const temporary = FindTemporary(handle);
        return temporary != nullptr ? temporary : Keep(std::make_unique<Object>(), handle);
    }

    // Keeps a new object as the handle's temporary one. The one before stays valid until DeleteTemporaries: somebody may have it
    // still.
    template <class Handle>
    static Object* Keep(std::unique_ptr<Object> object, Handle handle) {
        Temporary& temporary = TheTemporary();
        object.get()->*HandleMember = handle;
        temporary.all.push_back(Holder(object.release()));
        Object* const kept = temporary.all.back().get();
        temporary.current.insert_or_assign(handle, kept);
        return kept;
    }

    static void DeleteTemporaries() { TheTemporary() = Temporary(); }

private:
    struct Forget {  // the handle is not the object's
        void operator()(Object* object) const {
            object->*HandleMember = nullptr;
            delete object;
        }
    };
    using Holder = std::unique_ptr<Object, Forget>;

    struct Permanent {
        std::mutex mutex;  // guards objects
        std::unordered_map<void*, Object*> objects;
    };
    struct Temporary {
        std::vector<Holder> all;
        std::unordered_map<void*, Object*> current;
    };

    // Never destroyed: objects of the host may be, later than anything of the library.
    static Permanent& ThePermanent() {
        static Permanent& permanent = *new Permanent;
        return permanent;
    }
    // Stays usable after the thread's own objects are gone, while the host's may be going still.
    static Temporary& TheTemporary() {
        static constinit thread_local Temporary* current = nullptr;
        struct Cleaner {
            ~Cleaner() { delete std::exchange(current, nullptr); }
        };
        if (current == nullptr) {
            current = new Temporary;
            thread_local Cleaner cleaner;
            static_cast<void>(cleaner);
        }
        return *current;
    }
};

}  // namespace afx
