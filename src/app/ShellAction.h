#pragma once

#include <cstddef>

namespace velmo {

/// What an entry of the main menu or of the status menu does.
enum class ShellAction : std::size_t {
    about,
    hide,
    quit,
    openSetup,
    startNow,
    stopAndSave,
    togglePause,
    addMarker,
    restart,
    discard,
    openLibrary,
    openFolder,
    openQuadrel,
    undo,
    cut,
    copy,
    paste,
    selectAll,
    minimize,
    close,
    reviewPermissions,
    showShortcuts,
    openNotices,
    openSite,
    count ///< how many there are
};

} // namespace velmo
