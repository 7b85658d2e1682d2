#include "app/DesktopFileChooser.h"

#include <QFile>
#include <QFileDialog>

#include <utility>

namespace velmo {

namespace {

std::vector<std::filesystem::path> pathsOf(const QStringList& names) {
    std::vector<std::filesystem::path> paths;
    for (const QString& name : names) {
        paths.emplace_back(QFile::encodeName(name).toStdString());
    }
    return paths;
}

} // namespace

DesktopFileChooser::DesktopFileChooser() = default;
DesktopFileChooser::~DesktopFileChooser() = default;

void DesktopFileChooser::Later::operator()(QFileDialog* dialog) const {
    dialog->hide();
    dialog->deleteLater();
}

void DesktopFileChooser::chooseFiles(const QString& title, const QString& prompt,
                                     std::function<void(const std::vector<std::filesystem::path>&)> chosen) {
    dialog_.reset(new QFileDialog(nullptr, title));
    dialog_->setFileMode(QFileDialog::ExistingFiles);
    dialog_->setLabelText(QFileDialog::Accept, prompt);
    QObject::connect(dialog_.get(), &QFileDialog::filesSelected, dialog_.get(),
                     [chosen = std::move(chosen)](const QStringList& names) { chosen(pathsOf(names)); });
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

} // namespace velmo
