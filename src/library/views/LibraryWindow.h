#pragma once

#include "library/Library.h"
#include "platform/FileActions.h"
#include "session/Collaborators.h"
#include "settings/DefaultsStore.h"
#include "settings/ShortcutModifier.h"

#include <QMainWindow>

#include <filesystem>
#include <functional>
#include <optional>

class QStackedWidget;

namespace velmo {

class AlertDialog;
class EmptyLibrary;
class LibraryHead;
class RecordingGrid;
class RecordingModel;

/// The program's home: the finished recordings as a grid of cards. Main thread. Made once and hidden, never destroyed,
/// when it is closed. The menu bar is the application's to set.
class LibraryWindow final : public QMainWindow, public LibraryWindowPort {
    Q_OBJECT

public:
    /// All borrowed. `places` keeps where the window stood, under "NSWindow Frame VelmoStudioLibrary"; `newRecording`
    /// is called by the buttons that begin one.
    LibraryWindow(Library& library, FileActions& files, DefaultsStore& places, std::function<void()> newRecording);
    ~LibraryWindow() override;

    /// In front of everything. With a file its recording is selected and scrolled to.
    void show(std::optional<std::filesystem::path> focus) override;
    void hide() override;

    /// Of the key that the empty library tells.
    void setShortcutModifier(ShortcutModifier modifier);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeContent();
    void restorePlace();
    void libraryChanged();
    /// Selects what the library's focus names, once it is there.
    void openFocus();
    // These take copies: the list may be read again while a menu or a dialog is open.
    void openMenu(Recording recording, QPoint globalPosition);
    void play(const Recording& recording);
    void rename(Recording recording);
    void trash(Recording recording);
    void openFolder();
    void inform(const std::string& message);

    Library& library_;
    FileActions& files_;
    DefaultsStore& places_;
    std::function<void()> newRecording_;
    RecordingModel* model_;
    RecordingGrid* grid_;
    LibraryHead* head_;
    EmptyLibrary* empty_ = nullptr;
    QStackedWidget* pages_;
    std::optional<std::filesystem::path> current_; ///< selected; stays selected when the list is read again
};

} // namespace velmo
