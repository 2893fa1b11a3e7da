// SPDX-License-Identifier: Apache-2.0
#include "apps/example/StationWindow.h"

#include <corvane/documents/SCLDocument.h>

#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>
#include <QTreeWidget>

using namespace Corvane;

namespace
{

SCLElement* ElementOf(const QTreeWidgetItem* item)
{
    return static_cast<SCLElement*>(item->data(0, Qt::UserRole).value<void*>());
}

QString AttributesText(SCLElement* element)
{
    QStringList texts;
    const QList<SCLAttribute*> attributes = element->GetAttributeList();
    for (const SCLAttribute* attribute : attributes)
        texts.append(attribute->GetName() + QLatin1Char('=') + attribute->GetValue());
    return texts.join(QStringLiteral("  "));
}

} // namespace

StationWindow::StationWindow(SCLDocControl& control)
    : m_control(control), m_tree(new QTreeWidget), m_messages(new QListWidget),
      m_progress(new QProgressBar)
{
    m_tree->setHeaderLabels({tr("Element"), tr("Attributes"), tr("Text")});
    m_tree->setColumnWidth(0, 280);
    m_tree->setColumnWidth(1, 420);
    m_tree->setUniformRowHeights(true);
    setCentralWidget(m_tree);
    AddMenu();
    AddDocks();
    ListenToControl();
    resize(900, 640);
}

void StationWindow::AddMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Station"));
    connect(menu->addAction(tr("&Schema...")), &QAction::triggered, this, [this] {
        UseSchema(QFileDialog::getOpenFileName(this, QString(), QString(), tr("Schema (*.xsd)")));
    });
    connect(menu->addAction(tr("&Open...")), &QAction::triggered, this,
            [this] { Open(QFileDialog::getOpenFileName(this)); });
    connect(menu->addAction(tr("&Quit")), &QAction::triggered, this, &QWidget::close);
}

void StationWindow::AddDocks()
{
    auto* dock = new QDockWidget(tr("Messages"));
    dock->setWidget(m_messages);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    m_progress->setMaximumWidth(240);
    m_progress->hide();
    statusBar()->addPermanentWidget(m_progress);
}

void StationWindow::ListenToControl()
{
    connect(&m_control, &SCLDocControl::sigDocumentOpened, this, &StationWindow::ShowDocument);
    connect(&m_control, &SCLDocControl::sigDocumentAboutToBeClosed, m_tree, &QTreeWidget::clear);
    connect(&m_control, &SCLDocControl::sigFutaskTaskPrepared, this, &StationWindow::ShowProgress);
    connect(&m_control, &SCLDocControl::sigOutMessage, this, &StationWindow::ShowMessage);

    connect(&m_watcher, &QFutureWatcherBase::progressRangeChanged, m_progress,
            &QProgressBar::setRange);
    connect(&m_watcher, &QFutureWatcherBase::progressValueChanged, m_progress,
            &QProgressBar::setValue);
    connect(&m_watcher, &QFutureWatcherBase::finished, m_progress, &QWidget::hide);

    // The elements of a collapsed item have no items of their own: a station has very many.
    connect(m_tree, &QTreeWidget::itemExpanded, this, &StationWindow::AddChildren);
}

void StationWindow::UseSchema(const QString& fileName)
{
    if (fileName.isEmpty())
        return;
    const bool usable = m_control.RegisterSchema(fileName) && m_control.HasSclSchema();
    statusBar()->showMessage(usable ? tr("The schema is in use.") : tr("This is no SCL schema."));
}

void StationWindow::Open(const QString& fileName)
{
    if (fileName.isEmpty())
        return;
    const QList<SCLDocument*> old = m_control.GetDocumentList();
    for (SCLDocument* document : old)
        m_control.CloseDocument(document, true);
    m_messages->clear();
    m_control.SetLastError(QString());
    if (m_control.OpenDocument(fileName, true) == nullptr) {
        const QString error = m_control.GetLastError();
        ShowMessage(tr("Not loaded"),
                    error.isEmpty() ? tr("%1 cannot be read").arg(fileName) : error);
        return;
    }
    QStringList messages;
    const bool valid = m_control.SchemaValidate(fileName, messages);
    if (m_control.HasSclSchema())
        statusBar()->showMessage(valid ? tr("The file is valid.") : tr("The file is not valid."));
}

void StationWindow::ShowDocument(SCLDocument* document)
{
    setWindowTitle(QFileInfo(document->GetFileName()).fileName());
    AddItem(m_tree->invisibleRootItem(), document->Root());
    m_tree->expandToDepth(0);
}

void StationWindow::ShowProgress(const QFuture<QString>& future, const QString& title)
{
    m_progress->setFormat(title + QStringLiteral(" %p %"));
    m_progress->show();
    m_watcher.setFuture(future);
}

void StationWindow::ShowMessage(const QString& level, const QString& text)
{
    m_messages->addItem(level + QStringLiteral("  ") + text);
}

void StationWindow::AddItem(QTreeWidgetItem* parent, SCLElement* element)
{
    auto* item = new QTreeWidgetItem(
        parent, {element->GetTag(), AttributesText(element), element->GetValue().trimmed()});
    item->setData(0, Qt::UserRole, QVariant::fromValue(static_cast<void*>(element)));
    if (element->GetChildCount(false) > 0)
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
}

void StationWindow::AddChildren(QTreeWidgetItem* item)
{
    if (item->childCount() > 0)
        return;
    SCLElement* element = ElementOf(item);
    const QList<SCLElement*> children =
        m_control.HasSclSchema() ? element->GetSortedChildList() : element->GetChildList();
    for (SCLElement* child : children)
        AddItem(item, child);
}
