#include "app/EditCommand.h"

#include <QApplication>
#include <QMetaObject>
#include <QWidget>

namespace velmo {

void sendEditCommand(const char* command) {
    QWidget* widget = QApplication::focusWidget();
    if (widget != nullptr && widget->metaObject()->indexOfSlot((QByteArray(command) + "()").constData()) >= 0) {
        QMetaObject::invokeMethod(widget, command);
    }
}

} // namespace velmo
