// Viewer: looks into files that were exported: cut files of both dialects, files for nesting,
// Illustrator drawings, reports and label files.
#ifndef KIVHOST_VIEWER_H
#define KIVHOST_VIEWER_H

#include <QString>

#include <memory>

namespace KivSystem {

class MdiChild;

/// Whether the file is of a kind that makeViewer() shows, by its first bytes and, where they tell
/// nothing, by its extension. False for a file that cannot be read.
bool canView(const QString &path);

/// A window that shows the file, titled by its name. Throws HostError (ExitUnreadable) with one
/// sentence that names the file, and the place in it, for what cannot be read.
std::unique_ptr<MdiChild> makeViewer(const QString &path);

} // namespace KivSystem

#endif
