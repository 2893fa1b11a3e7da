// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/CDialogSaveVersion.h>
#include <corvane/elements/SCLNamePool.h>

#include <QApplication>
#include <QBoxLayout>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::CDialogSaveVersion;

namespace
{

enum Side { Previous, Current };
enum Row { Version, Revision, When, Who, What, Why };

QGroupBox* Box(QWidget* dialog, Side side)
{
    auto* rows = qobject_cast<QVBoxLayout*>(dialog->layout());
    auto* boxes = rows ? qobject_cast<QHBoxLayout*>(rows->itemAt(0)->layout()) : nullptr;
    return boxes ? qobject_cast<QGroupBox*>(boxes->itemAt(side)->widget()) : nullptr;
}

/// What stands in a cell of one of the two grids.
template <typename Widget>
Widget* Cell(QWidget* dialog, Side side, int row, int column)
{
    auto* grid = qobject_cast<QGridLayout*>(Box(dialog, side)->layout());
    QLayoutItem* item = grid ? grid->itemAtPosition(row, column) : nullptr;
    return item ? qobject_cast<Widget*>(item->widget()) : nullptr;
}

QLineEdit* Field(QWidget* dialog, Side side, int row)
{
    auto* field = Cell<QLineEdit>(dialog, side, row, 1);
    if (field == nullptr)
        qFatal("no field in row %d", row);
    return field;
}

QStringList Texts(QWidget* dialog, Side side)
{
    QStringList texts;
    for (int row = Version; row <= Why; ++row)
        texts += Field(dialog, side, row)->text();
    return texts;
}

QPushButton* Button(QWidget* dialog, QDialogButtonBox::ButtonRole role)
{
    auto* box = dialog->findChild<QDialogButtonBox*>();
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* button : buttons) {
        if (box->buttonRole(button) == role)
            return qobject_cast<QPushButton*>(button);
    }
    return nullptr;
}

void Press(QWidget* dialog, QDialogButtonBox::ButtonRole role)
{
    QTest::mouseClick(Button(dialog, role), Qt::LeftButton);
}

/// Saves with the question for a version while \a user works the dialog. False if none came up.
bool SaveAsking(SCLDocument* document, const QString& path,
                const std::function<void(QWidget*)>& user)
{
    bool asked = false;
    QTimer::singleShot(0, document, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        asked = qobject_cast<CDialogSaveVersion*>(dialog) != nullptr;
        if (asked)
            user(dialog);
    });
    return document->SaveAs(path, true, true) && asked;
}

QByteArray HeaderWith(const QByteArray& items)
{
    return "<SCL><Header id=\"h\"><History>" + items + "</History></Header></SCL>";
}

using Edit = std::function<void(SCLElement*)>;

} // namespace

Q_DECLARE_METATYPE(Edit)

class CDialogSaveVersionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFormIsLaidOutInTwoBoxes();
    void theFormHasItsTexts();
    void onlyWhoWhatAndWhyCanBeEdited();
    void theButtonsAreOkAndSkip();

    void thePreviousFieldsStayEmptyWithoutARecord_data();
    void thePreviousFieldsStayEmptyWithoutARecord();
    void thePreviousFieldsShowTheLastRecordInFileOrder();
    void theProposalFollowsThePreviousRecord_data();
    void theProposalFollowsThePreviousRecord();
    void theWhenFieldHoldsTheLocalTimeInIsoForm();

    void okAppendsOneRecordWithTrimmedTexts();
    void okKeepsEarlierRecords();
    void okCreatesTheHistoryAndEmptyAttributes();
    void okWritesTheProposalWhateverHappenedSince();
    void okReportsTheRecordAsAnOrdinaryEdit();
    void okStaysOpenIfTheHistoryCannotBeCreated();
    void skipWritesNothing();

    void savingAsksAndWritesTheRecord();
    void savingGoesOnWithoutARecord_data();
    void savingGoesOnWithoutARecord();
    void savingWithoutTheQuestionShowsNothing();
    void aFileThatCannotBeOpenedIsNotAskedFor();
    void theVersionMovesOnlyAfterAnIedWasAddedOrDeleted_data();
    void theVersionMovesOnlyAfterAnIedWasAddedOrDeleted();
    void aSavedOrLoadedDocumentHasNoIedChange();
    void theDialogStandsOverTheFirstMainWindow();
    void signalsOfASaveWithRecordComeInOrder();
};

void CDialogSaveVersionTest::theFormIsLaidOutInTwoBoxes()
{
    TestControl control;
    CDialogSaveVersion dialog(control.OpenRoot("<SCL><Header/></SCL>"), false, nullptr);

    auto* rows = qobject_cast<QVBoxLayout*>(dialog.layout());
    QVERIFY(rows);
    QCOMPARE(rows->count(), 3);
    QVERIFY(qobject_cast<QHBoxLayout*>(rows->itemAt(0)->layout()));
    QCOMPARE(rows->itemAt(0)->layout()->count(), 2);
    QVERIFY(rows->itemAt(1)->spacerItem());
    QCOMPARE(rows->itemAt(1)->sizeHint().height(), 5);
    QVERIFY(qobject_cast<QDialogButtonBox*>(rows->itemAt(2)->widget()));
    for (const Side side : {Previous, Current}) {
        auto* grid = qobject_cast<QGridLayout*>(Box(&dialog, side)->layout());
        QVERIFY(grid);
        QCOMPARE(grid->rowCount(), 6);
        QCOMPARE(grid->columnCount(), 2);
    }
}

void CDialogSaveVersionTest::theFormHasItsTexts()
{
    TestControl control;
    CDialogSaveVersion dialog(control.OpenRoot("<SCL><Header/></SCL>"), false, nullptr);

    QCOMPARE(dialog.windowTitle(), QString("Save SCL Version"));
    QCOMPARE(Box(&dialog, Previous)->title(), QString("Previous Versio"));
    QCOMPARE(Box(&dialog, Current)->title(), QString("Current Version"));
    for (const Side side : {Previous, Current}) {
        QStringList labels;
        for (int row = Version; row <= Why; ++row) {
            QVERIFY(Cell<QLabel>(&dialog, side, row, 0));
            labels += Cell<QLabel>(&dialog, side, row, 0)->text();
        }
        QCOMPARE(labels, QStringList({"Version:", "Reversion:", "When:", "Who:", "What:", "Why:"}));
    }
}

void CDialogSaveVersionTest::onlyWhoWhatAndWhyCanBeEdited()
{
    TestControl control;
    CDialogSaveVersion dialog(control.OpenRoot("<SCL><Header/></SCL>"), false, nullptr);
    for (int row = Version; row <= Why; ++row) {
        QVERIFY(!Field(&dialog, Previous, row)->isEnabled());
        QCOMPARE(Field(&dialog, Current, row)->isEnabled(), row >= Who);
    }
}

void CDialogSaveVersionTest::theButtonsAreOkAndSkip()
{
    TestControl control;
    CDialogSaveVersion dialog(control.OpenRoot("<SCL><Header/></SCL>"), false, nullptr);
    auto* box = dialog.findChild<QDialogButtonBox*>();
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(int(box->buttons().size()), 2);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok));
    QCOMPARE(Button(&dialog, QDialogButtonBox::AcceptRole), box->button(QDialogButtonBox::Ok));
    QCOMPARE(Button(&dialog, QDialogButtonBox::RejectRole)->text(), QString("Skip"));
}

void CDialogSaveVersionTest::thePreviousFieldsStayEmptyWithoutARecord_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("no History") << QByteArray("<SCL><Header/></SCL>");
    QTest::newRow("empty History") << HeaderWith("");
    QTest::newRow("other children only") << HeaderWith("<Text/>");
    QTest::newRow("a record deeper down") << HeaderWith("<Text><Hitem version=\"2\"/></Text>");
    QTest::newRow("a record beside the History")
        << QByteArray("<SCL><Header><Hitem version=\"2\"/></Header></SCL>");
}

void CDialogSaveVersionTest::thePreviousFieldsStayEmptyWithoutARecord()
{
    QFETCH(QByteArray, xml);
    TestControl control;
    CDialogSaveVersion dialog(At(control.OpenRoot(xml), "Header"), false, nullptr);
    QCOMPARE(Texts(&dialog, Previous), QStringList({"", "", "", "", "", ""}));
    QCOMPARE(Field(&dialog, Current, Version)->text(), QString("1.0"));
    QCOMPARE(Field(&dialog, Current, Revision)->text(), QString("1.0"));
}

void CDialogSaveVersionTest::thePreviousFieldsShowTheLastRecordInFileOrder()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        HeaderWith("<Hitem version=\"9.0\" revision=\"9.0\"/>"
                   "<Hitem why=\"f\" what=\"e\" who=\"d\" when=\"c\" revision=\"1.4\" "
                   "version=\"2.3\"/>"));
    CDialogSaveVersion dialog(At(root, "Header"), false, nullptr);
    QCOMPARE(Texts(&dialog, Previous), QStringList({"2.3", "1.4", "c", "d", "e", "f"}));
    QCOMPARE(Texts(&dialog, Current).mid(0, 2), QStringList({"2.3", "1.5"}));
    QCOMPARE(Texts(&dialog, Current).mid(3), QStringList({"", "", ""}));
}

void CDialogSaveVersionTest::theProposalFollowsThePreviousRecord_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("revision");
    QTest::addColumn<bool>("iedChanged");
    QTest::addColumn<QString>("newVersion");
    QTest::addColumn<QString>("newRevision");

    QTest::newRow("none") << ""
                          << "" << false << "1.0"
                          << "1.0";
    QTest::newRow("none, IEDs changed") << ""
                                        << "" << true << "1.1"
                                        << "1.0";
    QTest::newRow("both") << "2.3"
                          << "1.4" << false << "2.3"
                          << "1.5";
    QTest::newRow("both, IEDs changed") << "2.3"
                                        << "1.4" << true << "2.4"
                                        << "1.5";
    QTest::newRow("no revision") << "2.3"
                                 << "" << false << "2.3"
                                 << "0.1";
    QTest::newRow("version is no number") << "two"
                                          << "1.4" << false << "1.0"
                                          << "1.0";
    QTest::newRow("version is no number, IEDs changed") << "two"
                                                        << "1.4" << true << "1.1"
                                                        << "1.0";
    QTest::newRow("version 0") << "0"
                               << "1.4" << false << "1.0"
                               << "1.0";
    QTest::newRow("revision is no number") << "2.3"
                                           << "B" << false << "2.3"
                                           << "0.1";
    QTest::newRow("revision only") << ""
                                   << "1.4" << false << "1.0"
                                   << "1.0";
    QTest::newRow("blank version") << "  "
                                   << "1.4" << false << "1.0"
                                   << "1.0";
    QTest::newRow("blanks around") << " 2.3 "
                                   << "\t1.4" << false << "2.3"
                                   << "1.5";
    QTest::newRow("whole numbers") << "2"
                                   << "3" << false << "2.0"
                                   << "3.1";
    QTest::newRow("carry") << "2.9"
                           << "1.9" << true << "3.0"
                           << "2.0";
    QTest::newRow("a half of a tenth goes up") << "2.35"
                                               << "1.44" << false << "2.4"
                                               << "1.5";
    QTest::newRow("less than half of a tenth goes down") << "2.34"
                                                         << "0" << false << "2.3"
                                                         << "0.1";
    QTest::newRow("too small to count") << "0.04"
                                        << "1.4" << false << "1.0"
                                        << "1.0";
    QTest::newRow("the smallest that counts") << "0.05"
                                              << "1.4" << false << "0.1"
                                              << "1.5";
    QTest::newRow("negative") << "-2.3"
                              << "-1" << false << "-2.2"
                              << "-0.8";
    QTest::newRow("exponent") << "1e1"
                              << "1" << false << "10.0"
                              << "1.1";
    QTest::newRow("comma") << "2,3"
                           << "1" << false << "1.0"
                           << "1.0";
    QTest::newRow("number with a letter") << "2007B4"
                                          << "1" << false << "1.0"
                                          << "1.0";
    QTest::newRow("large") << "2007"
                           << "100" << false << "2007.0"
                           << "100.1";
    QTest::newRow("infinite") << "inf"
                              << "1" << false << "1.0"
                              << "1.0";
    QTest::newRow("negative infinite") << "-inf"
                                       << "1" << false << "1.0"
                                       << "1.0";
    QTest::newRow("no number") << "nan"
                               << "1" << false << "1.0"
                               << "1.0";
    QTest::newRow("beyond any integer") << "1e300"
                                        << "1" << false << "1.0"
                                        << "1.0";
    QTest::newRow("revision infinite") << "2.3"
                                       << "inf" << false << "2.3"
                                       << "0.1";
    QTest::newRow("revision beyond any integer") << "2.3"
                                                 << "1e300" << false << "2.3"
                                                 << "0.1";
}

void CDialogSaveVersionTest::theProposalFollowsThePreviousRecord()
{
    QFETCH(QString, version);
    QFETCH(QString, revision);
    QFETCH(bool, iedChanged);
    TestControl control;
    SCLElement* header = control.Create()->Root()->CreateChild("Header", -1, false);
    SCLElement* item = header->CreateChild("History", -1, false)->CreateChild("Hitem", -1, false);
    item->SetAttribute("version", version, false);
    item->SetAttribute("revision", revision, false);

    CDialogSaveVersion dialog(header, iedChanged, nullptr);

    QTEST(Field(&dialog, Current, Version)->text(), "newVersion");
    QTEST(Field(&dialog, Current, Revision)->text(), "newRevision");
}

void CDialogSaveVersionTest::theWhenFieldHoldsTheLocalTimeInIsoForm()
{
    TestControl control;
    SCLElement* header = At(control.OpenRoot("<SCL><Header/></SCL>"), "Header");
    const QDateTime before = QDateTime::currentDateTime().addMSecs(-999);
    CDialogSaveVersion dialog(header, false, nullptr);
    const QString text = Field(&dialog, Current, When)->text();
    const QDateTime when = QDateTime::fromString(text, Qt::ISODate);

    QVERIFY(when.isValid());
    QCOMPARE(text, when.toString("yyyy-MM-ddTHH:mm:ss"));
    QVERIFY(before <= when && when <= QDateTime::currentDateTime());
}

void CDialogSaveVersionTest::okAppendsOneRecordWithTrimmedTexts()
{
    TestControl control;
    SCLElement* header = At(control.OpenRoot(HeaderWith("")), "Header");
    CDialogSaveVersion dialog(header, false, nullptr);
    dialog.show();
    QTest::keyClicks(Field(&dialog, Current, Who), "  Li Wei ");
    QTest::keyClicks(Field(&dialog, Current, What), "GOOSE inputs");
    Field(&dialog, Current, Why)->setText("\tretrofit\t");
    const QString when = Field(&dialog, Current, When)->text();

    Press(&dialog, QDialogButtonBox::AcceptRole);

    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(ElementText(header),
             "<Header id=\"h\"><History><Hitem version=\"1.0\" revision=\"1.0\" when=\"" + when +
                 "\" who=\"Li Wei\" what=\"GOOSE inputs\" why=\"retrofit\"/></History></Header>");
}

void CDialogSaveVersionTest::okKeepsEarlierRecords()
{
    TestControl control;
    SCLElement* header =
        At(control.OpenRoot(HeaderWith("<Hitem version=\"2.3\" revision=\"1.4\"/>")), "Header");
    CDialogSaveVersion dialog(header, true, nullptr);
    dialog.accept();
    SCLElement* history = header->GetFirstChild("History");
    QCOMPARE(history->GetChildCount(true), 2);
    QCOMPARE(ElementText(history->FindChild("Hitem", 0)),
             QString("<Hitem version=\"2.3\" revision=\"1.4\"/>"));
    QCOMPARE(history->FindChild("Hitem", 1)->GetAttribute("version"), QString("2.4"));
    QCOMPARE(history->FindChild("Hitem", 1)->GetAttribute("revision"), QString("1.5"));
}

void CDialogSaveVersionTest::okCreatesTheHistoryAndEmptyAttributes()
{
    TestControl control;
    SCLElement* header = At(control.OpenRoot("<SCL><Header/></SCL>"), "Header");
    CDialogSaveVersion dialog(header, true, nullptr);
    dialog.accept();
    QCOMPARE(ElementText(header),
             "<Header><History><Hitem version=\"1.1\" revision=\"1.0\" when=\"" +
                 Field(&dialog, Current, When)->text() +
                 "\" who=\"\" what=\"\" why=\"\"/></History></Header>");
}

void CDialogSaveVersionTest::okWritesTheProposalWhateverHappenedSince()
{
    TestControl control;
    SCLElement* header = At(control.OpenRoot("<SCL><Header/></SCL>"), "Header");
    CDialogSaveVersion dialog(header, false, nullptr);
    SCLElement* history = header->CreateChild("History", -1, false);
    history->CreateChild("Hitem", {{"version", "7.0"}, {"revision", "7.0"}}, -1, false);
    dialog.accept();
    QCOMPARE(history->FindChild("Hitem", 1)->GetAttribute("version"), QString("1.0"));
}

void CDialogSaveVersionTest::okReportsTheRecordAsAnOrdinaryEdit()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/></SCL>");
    CDialogSaveVersion dialog(At(document->Root(), "Header"), false, nullptr);
    const QString when = Field(&dialog, Current, When)->text();
    SignalLog log(document);

    dialog.accept();

    QCOMPARE(log.Lines(),
             QStringList({"addElement <History/>", "modifiedStateChanged true",
                          "addElement <Hitem/>", "editAttribute Hitem version null -> \"1.0\"",
                          "editAttribute Hitem revision null -> \"1.0\"",
                          "editAttribute Hitem when null -> \"" + when + "\"",
                          "editAttribute Hitem who null -> \"\"",
                          "editAttribute Hitem what null -> \"\"",
                          "editAttribute Hitem why null -> \"\""}));
}

void CDialogSaveVersionTest::okStaysOpenIfTheHistoryCannotBeCreated()
{
    TestControl control;
    SCLElement* header = At(control.OpenRoot("<SCL><Header/></SCL>"), "Header");
    Internal::SCLNamePool* pool = Internal::SCLNamePool::Instance();
    for (int i = 0; pool->AddTagToNamePool("t" + QString::number(i)) != 0; ++i)
        ;
    CDialogSaveVersion dialog(header, false, nullptr);
    dialog.show();

    Press(&dialog, QDialogButtonBox::AcceptRole);

    QVERIFY(dialog.isVisible());
    QCOMPARE(ElementText(header), QString("<Header/>"));
    Press(&dialog, QDialogButtonBox::RejectRole);
    QVERIFY(!dialog.isVisible());
}

void CDialogSaveVersionTest::skipWritesNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/></SCL>");
    CDialogSaveVersion dialog(At(document->Root(), "Header"), false, nullptr);
    SignalLog log(document);
    dialog.show();
    QTest::keyClicks(Field(&dialog, Current, Who), "Li Wei");

    Press(&dialog, QDialogButtonBox::RejectRole);

    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(ElementText(document->Root()), QString("<SCL><Header/></SCL>"));
    QCOMPARE(log.Lines(), QStringList());
}

void CDialogSaveVersionTest::savingAsksAndWritesTheRecord()
{
    TestControl control;
    SCLDocument* document =
        control.Open(HeaderWith("<Hitem version=\"2.3\" revision=\"1.4\" who=\"x\"/>"));
    const QString path = control.Folder().Path("out.scd");
    QString when;

    QVERIFY(SaveAsking(document, path, [&](QWidget* dialog) {
        when = Field(dialog, Current, When)->text();
        QTest::keyClicks(Field(dialog, Current, Who), "Li Wei");
        QTest::keyClicks(Field(dialog, Current, What), "inputs");
        QTest::keyClicks(Field(dialog, Current, Why), "retrofit");
        Press(dialog, QDialogButtonBox::AcceptRole);
    }));

    QVERIFY(!document->GetModified());
    QCOMPARE(ReadFile(path),
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SCL>\n"
             "  <Header id=\"out\" toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\">\n"
             "    <History>\n"
             "      <Hitem version=\"2.3\" revision=\"1.4\" who=\"x\"/>\n"
             "      <Hitem version=\"2.3\" revision=\"1.5\" when=\"" +
                 when.toUtf8() +
                 "\" who=\"Li Wei\" what=\"inputs\" why=\"retrofit\"/>\n"
                 "    </History>\n  </Header>\n</SCL>\n");
}

void CDialogSaveVersionTest::savingGoesOnWithoutARecord_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("Skip") << "skip";
    QTest::newRow("the window is closed") << "close";
    QTest::newRow("Escape") << "escape";
}

void CDialogSaveVersionTest::savingGoesOnWithoutARecord()
{
    QFETCH(QString, way);
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/><IED/></SCL>");
    document->SetModified(true, false);
    const QString path = control.Folder().Path("out.scd");

    QVERIFY(SaveAsking(document, path, [&](QWidget* dialog) {
        QTest::keyClicks(Field(dialog, Current, Who), "Li Wei");
        if (way == "skip")
            Press(dialog, QDialogButtonBox::RejectRole);
        else if (way == "close")
            dialog->close();
        else
            QTest::keyClick(dialog, Qt::Key_Escape);
    }));

    QVERIFY(!document->GetModified());
    QCOMPARE(document->GetFileName(), path);
    QCOMPARE(ReadFile(path),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SCL>\n  <Header "
                        "toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\" id=\"out\"/>\n"
                        "  <IED/>\n</SCL>\n"));
}

void CDialogSaveVersionTest::savingWithoutTheQuestionShowsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    int shown = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer,
                     [&] { shown += int(QApplication::topLevelWidgets().size()); });
    timer.start(0);
    QVERIFY(document->SaveAs(control.Folder().Path("out.scd"), true, false));
    QCOMPARE(shown, 0);
}

void CDialogSaveVersionTest::aFileThatCannotBeOpenedIsNotAskedFor()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    QVERIFY(!SaveAsking(document, control.Folder().Path("missing/a.scd"),
                        [](QWidget* dialog) { dialog->close(); }));
    QCoreApplication::processEvents();
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(ElementText(document->Root()), QString("<SCL/>"));
}

void CDialogSaveVersionTest::theVersionMovesOnlyAfterAnIedWasAddedOrDeleted_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("version");

    QTest::newRow("nothing") << Edit([](SCLElement*) {}) << "2.3";
    QTest::newRow("IED added") << Edit([](SCLElement* root) { root->CreateChild("IED", -1, true); })
                               << "2.4";
    QTest::newRow("IED added without a signal")
        << Edit([](SCLElement* root) { root->CreateChild("IED", -1, false); }) << "2.3";
    QTest::newRow("IED deleted") << Edit([](SCLElement* root) {
        root->RemoveChild(root->GetFirstChild("IED"), true);
    }) << "2.4";
    QTest::newRow("IED deleted without a signal")
        << Edit([](SCLElement* root) { root->RemoveChild(root->GetFirstChild("IED"), false); })
        << "2.3";
    QTest::newRow("IED changed") << Edit([](SCLElement* root) {
        root->GetFirstChild("IED")->SetAttribute("name", "B", true);
    }) << "2.3";
    QTest::newRow("something else added")
        << Edit([](SCLElement* root) { root->CreateChild("Substation", -1, true); }) << "2.3";
    QTest::newRow("IED inside a subtree") << Edit([](SCLElement* root) {
        auto* subtree = new SCLElement("Private", nullptr, nullptr);
        subtree->CreateChild("IED", -1, true);
        root->AttachChild(subtree, -1, true);
    }) << "2.3";
}

void CDialogSaveVersionTest::theVersionMovesOnlyAfterAnIedWasAddedOrDeleted()
{
    QFETCH(Edit, edit);
    TestControl control;
    SCLDocument* document = control.Open(
        "<SCL><Header><History><Hitem version=\"2.3\"/></History></Header><IED/></SCL>");
    edit(document->Root());
    QString version;
    QVERIFY(SaveAsking(document, control.Folder().Path("out.scd"), [&](QWidget* dialog) {
        version = Field(dialog, Current, Version)->text();
        dialog->close();
    }));
    QTEST(version, "version");
}

void CDialogSaveVersionTest::aSavedOrLoadedDocumentHasNoIedChange()
{
    TestControl control;
    SCLDocument* document = control.Create();
    document->Root()->CreateChild("IED", -1, true);
    QStringList versions;
    const auto user = [&](QWidget* dialog) {
        versions += Field(dialog, Current, Version)->text();
        dialog->close();
    };
    const QString path = control.Folder().Path("out.scd");

    QVERIFY(!document->SaveAs(control.Folder().Path("missing/a.scd"), true, false));
    QVERIFY(SaveAsking(document, path, user));
    QVERIFY(SaveAsking(document, path, user));
    QVERIFY(SaveAsking(control.Open("<SCL><IED/></SCL>"), path, user));

    QCOMPARE(versions, QStringList({"1.1", "1.0", "1.0"}));
}

void CDialogSaveVersionTest::theDialogStandsOverTheFirstMainWindow()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const QString path = control.Folder().Path("out.scd");
    QWidget* parent = nullptr;
    const auto user = [&](QWidget* dialog) {
        parent = dialog->parentWidget();
        dialog->close();
    };

    QVERIFY(SaveAsking(document, path, user));
    QCOMPARE(parent, nullptr);
    QWidget plain;
    QVERIFY(SaveAsking(document, path, user));
    QCOMPARE(parent, nullptr);
    QMainWindow window;
    QVERIFY(SaveAsking(document, path, user));
    QCOMPARE(parent, &window);
}

void CDialogSaveVersionTest::signalsOfASaveWithRecordComeInOrder()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SignalLog log(document);
    QString when;
    QVERIFY(SaveAsking(document, control.Folder().Path("out.scd"), [&](QWidget* dialog) {
        log.Mark("dialog");
        when = Field(dialog, Current, When)->text();
        Press(dialog, QDialogButtonBox::AcceptRole);
        log.Mark("closed");
    }));
    QCOMPARE(log.Lines(),
             QStringList({"modifiedStateChanged true", "dialog", "addElement <History/>",
                          "addElement <Hitem/>", "editAttribute Hitem version null -> \"1.0\"",
                          "editAttribute Hitem revision null -> \"1.0\"",
                          "editAttribute Hitem when null -> \"" + when + "\"",
                          "editAttribute Hitem who null -> \"\"",
                          "editAttribute Hitem what null -> \"\"",
                          "editAttribute Hitem why null -> \"\"", "closed",
                          "taskPrepared \"Saving\"", "modifiedStateChanged false"}));
}

QTEST_MAIN(CDialogSaveVersionTest)
#include "CDialogSaveVersionTest.moc"
