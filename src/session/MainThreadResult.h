#pragma once

#include <QCoreApplication>
#include <QMetaObject>

#include <coroutine>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace velmo {

/// What a callback without a value delivers.
struct Done {};

/// Brings one value from a callback, called on any thread, to one coroutine on the main thread:
///
///     MainThreadResult<Result<void>> started(abandonedError);
///     recorder.start(request, started.callback());
///     const Result<void> result = co_await started;
///
/// The first call counts, later ones do nothing. The coroutine resumes once, from the event loop of the main thread
/// (or does not suspend when the value is already there). If every copy of the callback is destroyed uncalled, the
/// coroutine gets `abandoned`, so that nobody waits for ever. The callback may outlive this object and its coroutine.
template <typename T>
class MainThreadResult {
public:
    explicit MainThreadResult(T abandoned) : state_(std::make_shared<State>()), abandoned_(std::move(abandoned)) {}

    /// Once, before the wait.
    std::function<void(T)> callback() {
        return [token = std::make_shared<Token>(state_, std::move(abandoned_))](T value) {
            deliver(token->state, std::move(value));
        };
    }

    bool await_ready() const { return false; }
    bool await_suspend(std::coroutine_handle<> waiting) {
        const std::lock_guard guard(state_->lock);
        if (state_->value) {
            return false;
        }
        state_->waiting = waiting;
        return true;
    }
    T await_resume() {
        const std::lock_guard guard(state_->lock);
        return std::move(*state_->value);
    }

private:
    struct State {
        std::mutex lock;
        // protected by lock
        std::optional<T> value;
        std::coroutine_handle<> waiting;
    };

    /// Lives as long as somebody can still call.
    struct Token {
        Token(std::shared_ptr<State> to, T ifAbandoned) : state(std::move(to)), abandoned(std::move(ifAbandoned)) {}
        ~Token() { deliver(state, std::move(abandoned)); }
        Token(const Token&) = delete;
        Token& operator=(const Token&) = delete;

        std::shared_ptr<State> state;
        T abandoned;
    };

    static void deliver(const std::shared_ptr<State>& state, T value) {
        std::coroutine_handle<> waiting;
        {
            const std::lock_guard guard(state->lock);
            if (state->value) {
                return;
            }
            state->value.emplace(std::move(value));
            waiting = state->waiting;
        }
        QCoreApplication* const application = QCoreApplication::instance();
        if (waiting && application != nullptr) {
            QMetaObject::invokeMethod(
                application, [waiting] { waiting.resume(); }, Qt::QueuedConnection);
        }
    }

    std::shared_ptr<State> state_;
    T abandoned_;
};

} // namespace velmo
