#pragma once

#include <cstddef>
#include <utility>

namespace velmo {

/// An owning reference to an object that counts itself (`retain()`, `release()`, both const and thread-safe).
/// Used for frames and sound buffers only, where handing on must not allocate.
template <typename T>
class Ref {
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    /// Takes over one count that the caller already holds.
    static Ref adopt(T* object) {
        Ref ref;
        ref.object_ = object;
        return ref;
    }
    Ref(const Ref& other) : object_(other.object_) {
        if (object_ != nullptr) {
            object_->retain();
        }
    }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() {
        if (object_ != nullptr) {
            object_->release();
        }
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }
    friend bool operator==(const Ref& a, std::nullptr_t) { return a.object_ == nullptr; }

private:
    T* object_ = nullptr;
};

} // namespace velmo
