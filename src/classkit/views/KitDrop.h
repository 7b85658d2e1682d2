#pragma once

class QMimeData;

namespace velmo {

class ClassKit;

/// Material that comes by drag and drop, from file managers and browsers. Main thread.
namespace KitDrop {

/// Whether `data` has at least one file or web address.
bool holdsMaterial(const QMimeData& data);
/// Adds each of them, in order, and a file once; what is neither is left out. Files in a row come into the store with
/// one write. False when nothing was there to add.
bool addTo(ClassKit& kit, const QMimeData& data);

} // namespace KitDrop

} // namespace velmo
