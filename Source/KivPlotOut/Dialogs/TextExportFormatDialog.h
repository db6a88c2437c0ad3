// TextExportFormatDialog: asks which fields the user's own text report has, and in which order.
//
//     TextExportFormatDialog dialog(titles, names, TextIndexList::loadFromPreferences(), parent);
//     if (dialog.exec() == QDialog::Accepted) {
//         dialog.exportContents().saveAsPreferences();
//     }

#ifndef KIVPLOTOUT_TEXTEXPORTFORMATDIALOG_H
#define KIVPLOTOUT_TEXTEXPORTFORMATDIALOG_H

#include "TextIndexList.h"

#include "KivConjoin/ListEx.h"
#include "KivCore/Dialog.h"

#include <QScopedPointer>
#include <QStringList>

namespace KivSystem {

class ExportFormatUi;

class TextExportFormatDialog : public KivDialog
{
    Q_OBJECT

public:
    /// `formats` are the titles of the groups of fields, `contents` the names in each of them, of
    /// as many groups: another number is an error of the program and ends it. A field's index is
    /// its position in all the names together, from 0. `selection` is what the dialog begins with;
    /// an empty one stands for all fields of the first three groups, and an index that is no field
    /// is left out.
    TextExportFormatDialog(const QStringList &formats, const QListEx<QStringList> &contents,
        const TextIndexList &selection, QWidget *parent);
    ~TextExportFormatDialog() override;

    /// The chosen fields, once the dialog has been accepted.
    TextIndexList exportContents() const;

    void accept() override;

private Q_SLOTS:
    void on_selectFormat_currentIndexChanged(int index);
    void on_listSource_itemSelectionChanged();
    void on_listDestination_itemSelectionChanged();
    void on_buttonInsert_clicked();
    void on_buttonClear_clicked();

private:
    void updateButtonState();
    void addField(const QString &name, int index);
    void addFields(const TextIndexList &selection);

    QScopedPointer<ExportFormatUi> m_ui;
    TextIndexList mTextIndexList;
};

} // namespace KivSystem

#endif
