// WindowText: the words of the window. They go through Qt's translation, but are kept out of the
// translated files, which hold what the plug-in and the core library say.
#ifndef KIVHOST_WINDOWTEXT_H
#define KIVHOST_WINDOWTEXT_H

#include <QCoreApplication>
#include <QString>
#include <QTextDocument>

namespace KivSystem {

inline QString windowText(const char *english)
{
    return QCoreApplication::translate("KivHost", english);
}

/// A tool tip that shows the text as it stands, also one that Qt would take for HTML.
inline QString plainToolTip(const QString &text)
{
    const QString asHtml = text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
    return Qt::mightBeRichText(text) ? QStringLiteral("<qt>%1</qt>").arg(asHtml) : text;
}

} // namespace KivSystem

#endif
