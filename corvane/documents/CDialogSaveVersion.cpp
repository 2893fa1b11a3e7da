// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/CDialogSaveVersion.h>

#include <corvane/elements/SCLElement.h>

#include <QDateTime>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <cmath>

namespace Corvane::Internal
{

namespace
{

const QString g_strHistory = QStringLiteral("History");
const QString g_strHitem = QStringLiteral("Hitem");

QLineEdit* AddField(QGridLayout* grid, const QString& label, bool enabled)
{
    const int row = grid->count() / 2;
    auto* field = new QLineEdit;
    field->setEnabled(enabled);
    grid->addWidget(new QLabel(label), row, 0);
    grid->addWidget(field, row, 1);
    return field;
}

// Tenths of the number that a text begins as; 0 for a text that is no number of sane size.
int Tenths(const QString& text)
{
    constexpr double sane = 1e6;
    bool readable = false;
    const double number = text.trimmed().toDouble(&readable);
    if (!readable || !std::isfinite(number) || std::fabs(number) > sane)
        return 0;
    return static_cast<int>(std::trunc(number * 10.0 + 0.5));
}

QString OneDecimal(double number)
{
    return QString::number(number, 'f', 1);
}

} // namespace

CDialogSaveVersion::CDialogSaveVersion(SCLElement* header, bool iedChanged, QWidget* parent)
    : QDialog(parent), m_pHeader(header), m_bIEDChanged(iedChanged)
{
    BuildForm();
    FillPrevious();
    Propose();
}

void CDialogSaveVersion::BuildForm()
{
    setWindowTitle(tr("Save SCL Version"));

    auto* previous = new QGroupBox(tr("Previous Versio"));
    auto* previousGrid = new QGridLayout(previous);
    m_pPrevVersion = AddField(previousGrid, tr("Version:"), false);
    m_pPrevRevision = AddField(previousGrid, tr("Reversion:"), false);
    m_pPrevWhen = AddField(previousGrid, tr("When:"), false);
    m_pPrevWho = AddField(previousGrid, tr("Who:"), false);
    m_pPrevWhat = AddField(previousGrid, tr("What:"), false);
    m_pPrevWhy = AddField(previousGrid, tr("Why:"), false);

    auto* current = new QGroupBox(tr("Current Version"));
    auto* currentGrid = new QGridLayout(current);
    m_pCurVersion = AddField(currentGrid, tr("Version:"), false);
    m_pCurRevision = AddField(currentGrid, tr("Reversion:"), false);
    m_pCurWhen = AddField(currentGrid, tr("When:"), false);
    m_pCurWho = AddField(currentGrid, tr("Who:"), true);
    m_pCurWhat = AddField(currentGrid, tr("What:"), true);
    m_pCurWhy = AddField(currentGrid, tr("Why:"), true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, Qt::Horizontal);
    buttons->addButton(tr("Skip"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &CDialogSaveVersion::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CDialogSaveVersion::reject);

    auto* boxes = new QHBoxLayout;
    boxes->addWidget(previous);
    boxes->addWidget(current);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(boxes);
    layout->addSpacing(5);
    layout->addWidget(buttons);
}

void CDialogSaveVersion::FillPrevious()
{
    SCLElement* history = m_pHeader->GetFirstChild(g_strHistory);
    const QList<SCLElement*> items =
        history ? history->FindChildByType(g_strHitem, false) : QList<SCLElement*>();
    if (items.isEmpty())
        return;
    SCLElement* last = items.last();
    m_pPrevVersion->setText(last->GetAttribute(QStringLiteral("version")));
    m_pPrevRevision->setText(last->GetAttribute(QStringLiteral("revision")));
    m_pPrevWhen->setText(last->GetAttribute(QStringLiteral("when")));
    m_pPrevWhen->setCursorPosition(0);
    m_pPrevWho->setText(last->GetAttribute(QStringLiteral("who")));
    m_pPrevWhat->setText(last->GetAttribute(QStringLiteral("what")));
    m_pPrevWhy->setText(last->GetAttribute(QStringLiteral("why")));
}

void CDialogSaveVersion::Propose()
{
    const int version = Tenths(m_pPrevVersion->text());
    const int revision = Tenths(m_pPrevRevision->text());
    const double baseVersion = version == 0 ? 1.0 : version / 10.0;
    const double nextVersion = m_bIEDChanged ? baseVersion + 0.1 : baseVersion;
    // The version's text alone tells whether there is a history to go on from.
    const double nextRevision = version == 0 ? 1.0 : revision / 10.0 + 0.1;
    m_pCurVersion->setText(OneDecimal(nextVersion));
    m_pCurRevision->setText(OneDecimal(nextRevision));
    m_pCurWhen->setText(QDateTime::currentDateTime().toString(Qt::ISODate));
    m_pCurWhen->setCursorPosition(0); // a narrow field shows the date rather than the seconds
}

void CDialogSaveVersion::accept()
{
    SCLElement* history = m_pHeader->GetFirstChild(g_strHistory);
    if (!history)
        history = m_pHeader->CreateChild(g_strHistory, -1, true);
    if (!history)
        return;
    SCLElement* item = history->CreateChild(g_strHitem, -1, true);
    if (!item)
        return;
    const auto record = [item](const QString& name, const QLineEdit* field) {
        item->SetAttribute(name, field->text().trimmed(), true);
    };
    record(QStringLiteral("version"), m_pCurVersion);
    record(QStringLiteral("revision"), m_pCurRevision);
    record(QStringLiteral("when"), m_pCurWhen);
    record(QStringLiteral("who"), m_pCurWho);
    record(QStringLiteral("what"), m_pCurWhat);
    record(QStringLiteral("why"), m_pCurWhy);
    QDialog::accept();
}

} // namespace Corvane::Internal
