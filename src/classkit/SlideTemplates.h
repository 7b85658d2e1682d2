#pragma once

#include "platform/FileActions.h"

#include <filesystem>

namespace velmo::SlideTemplates {

/// Copies the slide templates in `resources`/plantillas to `documents`/Velmo Studio/Plantillas and shows that folder.
/// What is there already stays as it is: the teacher may have worked on it. What cannot be copied is left out. Main
/// thread.
void reveal(const std::filesystem::path& resources, const std::filesystem::path& documents, FileActions& files);

} // namespace velmo::SlideTemplates
