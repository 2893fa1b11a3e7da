// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/documents/SCLDocControl.h>

#include <QFutureWatcher>
#include <QMainWindow>

QT_BEGIN_NAMESPACE
class QListWidget;
class QProgressBar;
class QTreeWidget;
class QTreeWidgetItem;
QT_END_NAMESPACE

/// Shows one station file: its tree, the progress of loading it, what its validation says. All that
/// it knows of the library's doings it hears through the signals of SCLDocControl.
class StationWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit StationWindow(Corvane::SCLDocControl& control);

    /// Registers the schema, which also gives the tree its order.
    void UseSchema(const QString& fileName);
    /// Shows a station file in the place of the present one, and validates it if there is a schema.
    void Open(const QString& fileName);

private:
    void AddMenu();
    void AddDocks();
    void ListenToControl();
    void ShowDocument(Corvane::SCLDocument* document);
    void ShowProgress(const QFuture<QString>& future, const QString& title);
    void ShowMessage(const QString& level, const QString& text);
    void AddItem(QTreeWidgetItem* parent, Corvane::SCLElement* element);
    void AddChildren(QTreeWidgetItem* item);

    Corvane::SCLDocControl& m_control;
    QTreeWidget* m_tree;
    QListWidget* m_messages;
    QProgressBar* m_progress;
    QFutureWatcher<QString> m_watcher;
};
