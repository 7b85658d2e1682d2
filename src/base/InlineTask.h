#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace velmo {

/// A move-only `void()` callable that lives inside itself: handing work to a queue never touches the heap,
/// and a capture that is too big does not compile.
class InlineTask {
public:
    static constexpr std::size_t kCapacity = 160;

    InlineTask() = default;

    template <typename F>
    requires(!std::is_same_v<std::remove_cvref_t<F>, InlineTask> && std::is_invocable_v<F&>) InlineTask(F&& callable) {
        using Callable = std::remove_cvref_t<F>;
        static_assert(sizeof(Callable) <= kCapacity, "capture less, or capture a pointer");
        static_assert(alignof(Callable) <= alignof(std::max_align_t));
        static_assert(std::is_nothrow_move_constructible_v<Callable>);
        ::new (storage_) Callable(std::forward<F>(callable));
        operations_ = &kOperationsOf<Callable>;
    }

    InlineTask(InlineTask&& other) noexcept { take(other); }
    InlineTask& operator=(InlineTask&& other) noexcept {
        if (this != &other) {
            reset();
            take(other);
        }
        return *this;
    }
    ~InlineTask() { reset(); }

    explicit operator bool() const { return operations_ != nullptr; }
    void operator()() { operations_->call(storage_); }

private:
    struct Operations {
        void (*call)(void*);
        void (*moveTo)(void* from, void* to);
        void (*destroy)(void*);
    };

    template <typename Callable>
    static constexpr Operations kOperationsOf = {
        [](void* self) { (*static_cast<Callable*>(self))(); },
        [](void* from, void* to) {
            ::new (to) Callable(std::move(*static_cast<Callable*>(from)));
            static_cast<Callable*>(from)->~Callable();
        },
        [](void* self) { static_cast<Callable*>(self)->~Callable(); },
    };

    void take(InlineTask& other) {
        operations_ = std::exchange(other.operations_, nullptr);
        if (operations_ != nullptr) {
            operations_->moveTo(other.storage_, storage_);
        }
    }
    void reset() {
        if (const Operations* operations = std::exchange(operations_, nullptr)) {
            operations->destroy(storage_);
        }
    }

    alignas(std::max_align_t) std::byte storage_[kCapacity];
    const Operations* operations_ = nullptr;
};

} // namespace velmo
