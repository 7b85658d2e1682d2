#pragma once

#include <string>
#include <utility>
#include <variant>

namespace velmo {

/// A failure that can be logged and shown. `text` is the user-facing sentence (Spanish), `domain` and
/// `code` say where it came from and never change between releases.
struct Error {
    std::string domain;
    int code = 0;
    std::string text;

    friend bool operator==(const Error&, const Error&) = default;
};

/// The value of an operation on a cold path, or the reason why there is none.
/// Not for the frame path: there a failing step drops and counts.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Only when `ok()`.
    T& value() & { return std::get<0>(state_); }
    const T& value() const& { return std::get<0>(state_); }
    T&& value() && { return std::get<0>(std::move(state_)); }

    /// Only when not `ok()`.
    const Error& error() const { return std::get<1>(state_); }

private:
    std::variant<T, Error> state_;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }
    const Error& error() const { return std::get<1>(state_); }

private:
    std::variant<std::monostate, Error> state_;
};

} // namespace velmo
