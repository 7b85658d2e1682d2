#pragma once

#include "classkit/KitItem.h"

#include <QWidget>

namespace velmo {

class TextField;

/// One item in the setup section: icon, title to edit, and a button that takes it out of the list.
class KitSetupRow final : public QWidget {
    Q_OBJECT
public:
    explicit KitSetupRow(const KitItem& item, QWidget* parent = nullptr);

    const QUuid& id() const { return id_; }
    void setTitle(const QString& title);

signals:
    /// By the user.
    void titleEdited(const QString& title);
    void removeRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QUuid id_;
    const QString symbol_;
    TextField* title_;
};

} // namespace velmo
