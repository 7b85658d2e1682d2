#pragma once

#include "support/ReferencePlane.h"
#include "support/ReferenceRenderer.h"

namespace velmo::test {

/// Lays a window's picture over `target`, or pastes the unzoomed `source` back in the shape of the bubble and its
/// label.
void layReferenceSurface(ReferencePicture& target, const ReferencePicture& source,
                         const ReferenceScene::Surface& surface, const Rect& screen);

/// Shrinks the picture beside the camera's column, with the name tag in it.
void placeBesideColumn(ReferencePicture& frame, const ReferenceScene::Column& column);

} // namespace velmo::test
