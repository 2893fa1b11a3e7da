// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QString>

QT_BEGIN_NAMESPACE
class QGridLayout;
class QLineEdit;
QT_END_NAMESPACE

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// Asks for the version record of a save: shows the last `Hitem` of the `Header`'s `History` beside
/// the proposed next one, into which the user writes who changed what and why. OK appends the
/// record, "Skip" does not.
class CDialogSaveVersion : public QDialog
{
    Q_OBJECT

public:
    /// \param header     the document's `Header`; not owned, and must outlive the dialog.
    /// \param iedChanged whether an `IED` was added or deleted, which moves the version.
    CDialogSaveVersion(SCLElement* header, bool iedChanged, QWidget* parent);

    /// Appends the record, notifying, and closes the dialog.
    void accept() override;

private:
    void BuildForm();
    void FillPrevious();
    void Propose();

    SCLElement* m_pHeader;
    bool m_bIEDChanged;
    QLineEdit* m_pPrevVersion;
    QLineEdit* m_pPrevRevision;
    QLineEdit* m_pPrevWhen;
    QLineEdit* m_pPrevWho;
    QLineEdit* m_pPrevWhat;
    QLineEdit* m_pPrevWhy;
    QLineEdit* m_pCurVersion;
    QLineEdit* m_pCurRevision;
    QLineEdit* m_pCurWhen;
    QLineEdit* m_pCurWho;
    QLineEdit* m_pCurWhat;
    QLineEdit* m_pCurWhy;
};

} // namespace Internal
} // namespace Corvane
