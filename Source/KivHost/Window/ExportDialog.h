// The export dialog: the formats of a plug-in with their options, the export itself, and a report
// of what was written.
#ifndef KIVHOST_EXPORTDIALOG_H
#define KIVHOST_EXPORTDIALOG_H

#include <functional>

class QString;

namespace KivSystem {

class DocumentMak;
class ExporterFactory;
class MainWindow;

/// Runs the dialog until it is closed. All is borrowed. `openFile` gets the absolute path of a
/// written file that the user wants to see. The user interface of KivApplication should be a
/// WindowUserInterface: with another one nothing stands between the formats and the user's files,
/// so that nothing is exported.
void runExportDialog(MainWindow &window, const DocumentMak &document, ExporterFactory &factory,
    const std::function<void(const QString &path)> &openFile);

} // namespace KivSystem

#endif
