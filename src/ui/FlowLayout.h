#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace velmo {

/// Lays its widgets side by side and begins another row where they no longer fit. Main thread.
class FlowLayout final : public QLayout {
    Q_OBJECT
public:
    explicit FlowLayout(int gap, QWidget* parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(const QRect& place) override;

private:
    /// Height that the rows take in `place`; moves the items there if wanted.
    int arrange(const QRect& place, bool move) const;

    const int gap_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
};

} // namespace velmo
