// Linked into everything that is built with the thread sanitizer. Qt is built without it, so the sanitizer does not see
// the locks of Qt's event queue and takes what one thread hands to another through it for a race. Here that order is
// told to it: what was done before QMetaObject::invokeMethod comes before the call. Nothing else is taken for ordered.

#include <QObject>

#include <sanitizer/tsan_interface.h>

#include <memory>

namespace {

class OrderedCall final : public QtPrivate::QSlotObjectBase {
public:
    explicit OrderedCall(QtPrivate::QSlotObjectBase* call) : QSlotObjectBase(&OrderedCall::act), call_(call) {
        __tsan_release(this);
    }

private:
    static void act(int which, QSlotObjectBase* base, QObject* receiver, void** arguments, bool* isEqual) {
        auto* const self = static_cast<OrderedCall*>(base);
        __tsan_acquire(self);
        switch (which) {
        case Destroy:
            self->call_->destroyIfLastRef();
            std::default_delete<OrderedCall>()(self);
            break;
        case Call:
            self->call_->call(receiver, arguments);
            __tsan_release(self); // who handed it over may be the one that lets go of it
            break;
        default:
            *isEqual = false;
        }
    }

    QtPrivate::QSlotObjectBase* const call_;
};

} // namespace

// The linker's --wrap turns each call of QMetaObject::invokeMethodImpl to the first of these, and the second to Qt's
// own.
extern "C" {
using Call = QtPrivate::QSlotObjectBase;
void AnnotateIgnoreReadsBegin(const char* file, int line);
void AnnotateIgnoreReadsEnd(const char* file, int line);
void AnnotateIgnoreWritesBegin(const char* file, int line);
void AnnotateIgnoreWritesEnd(const char* file, int line);
bool __real__ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv(
    QObject* receiver, Call* call, Qt::ConnectionType type, void* result);

bool __wrap__ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv(
    QObject* receiver, Call* call, Qt::ConnectionType type, void* result) {
    const auto wrapped = std::make_unique<OrderedCall>(call).release();
    if (type != Qt::QueuedConnection) { // may be called in here
        return __real__ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv(
            receiver, wrapped, type, result);
    }
    AnnotateIgnoreReadsBegin(__FILE__, __LINE__); // of the event queue itself
    AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    const bool done =
        __real__ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv(
            receiver, wrapped, type, result);
    AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
    AnnotateIgnoreReadsEnd(__FILE__, __LINE__);
    return done;
}
}
