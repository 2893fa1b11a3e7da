// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <corvane/help/WatchedEdit.h>

#include <QTest>

#include <functional>

using namespace Corvane;
using namespace Corvane::Internal;
using namespace Corvane::Test;

using Work = std::function<void(SCLElement* root)>;
Q_DECLARE_METATYPE(Work)

class WatchedEditTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsAskedForIsDone();
    void anEditIsAloneWithoutSlots();
    void slotsThatOnlyLookLeaveItAlone();
    void whatASlotChangesIsNoticed_data();
    void whatASlotChangesIsNoticed();
    void aChangeThatMakesUpForAnotherIsNoticed();
    void aChildThatASlotTookOutIsNotGiven();
    void aRefusedChildIsAFailure();
};

namespace
{

const QByteArray file = "<SCL><a><P>x</P><Q/></a><b/></SCL>";

// Each kind of change once, some of them changing nothing.
void MakeChanges(WatchedEdit& edit, SCLElement* root)
{
    SCLElement* child = edit.Create(root, "IED", {{"name", "n"}, {"desc", "d"}});
    edit.Create(child, "AccessPoint");
    edit.SetValue(child, "v");
    edit.SetValue(child, "v");
    edit.SetValue(child, "");
    edit.Remove(root, root->GetFirstChild("b"));
    edit.Remove(root, root->GetFirstChild("a"));
}

} // namespace

void WatchedEditTest::whatIsAskedForIsDone()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(file);
    WatchedEdit edit;
    QVERIFY(!edit.HasChanged());
    MakeChanges(edit, root);
    QVERIFY(edit.HasChanged());
    QVERIFY(!edit.HasFailed());
    QCOMPARE(ElementText(root),
             QString("<SCL><IED desc=\"d\" name=\"n\"><AccessPoint/></IED></SCL>"));
}

void WatchedEditTest::anEditIsAloneWithoutSlots()
{
    TestControl control;
    WatchedEdit edit;
    MakeChanges(edit, control.OpenRoot(file));
    QVERIFY(edit.IsAlone());

    SCLElement detached("SCL", nullptr, nullptr);
    detached.CreateChild("a", -1, false)->CreateChild("c", -1, false);
    detached.CreateChild("b", -1, false);
    MakeChanges(edit, &detached);
    QVERIFY(edit.IsAlone());
}

void WatchedEditTest::slotsThatOnlyLookLeaveItAlone()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(file);
    QStringList seen;
    const QObject context;
    const auto look = [&seen](SCLElement* element) { seen.append(ElementText(element)); };
    QObject::connect(root->GetDocument(), &SCLDocument::sigAddElement, &context, look);
    QObject::connect(root->GetDocument(), &SCLDocument::sigEditValue, &context, look);
    QObject::connect(root->GetDocument(), &SCLDocument::sigDeleteElement, &context, look);
    WatchedEdit edit;
    MakeChanges(edit, root);
    QVERIFY(edit.IsAlone());
    QCOMPARE(seen.size(), 6);
}

void WatchedEditTest::whatASlotChangesIsNoticed_data()
{
    QTest::addColumn<Work>("change");
    QTest::newRow("a value") << Work([](SCLElement* root) { root->SetValue("new", false); });
    QTest::newRow("an attribute") << Work(
        [](SCLElement* root) { root->SetAttribute("desc", "new", false); });
    QTest::newRow("a bare attribute")
        << Work([](SCLElement* root) { root->FindAttribute("name")->SetValue("new"); });
    QTest::newRow("a child") << Work([](SCLElement* root) { root->CreateChild("c", -1, false); });
    QTest::newRow("a removed child")
        << Work([](SCLElement* root) { root->RemoveChild(root->GetFirstChild("z"), false); });
}

void WatchedEditTest::whatASlotChangesIsNoticed()
{
    QFETCH(const Work, change);
    using Connect = std::function<void(SCLDocument*, const std::function<void()>&)>;
    const Connect signalsOfDocument[] = {
        [](SCLDocument* document, const std::function<void()>& slot) {
            QObject::connect(document, &SCLDocument::sigAddElement, slot);
        },
        [](SCLDocument* document, const std::function<void()>& slot) {
            QObject::connect(document, &SCLDocument::sigEditValue, slot);
        },
        [](SCLDocument* document, const std::function<void()>& slot) {
            QObject::connect(document, &SCLDocument::sigDeleteElement, slot);
        },
        [](SCLDocument* document, const std::function<void()>& slot) {
            QObject::connect(document, &SCLDocument::sigModifiedStateChanged, slot);
        }};
    for (int signal = 0; signal < 4; ++signal) {
        for (int kind = 0; kind < 4; ++kind) {
            TestControl control;
            SCLElement* root = control.OpenRoot("<SCL name=''><a><P/></a><z/></SCL>");
            bool called = false;
            signalsOfDocument[signal](root->GetDocument(), [&] {
                if (!called)
                    change(root);
                called = true;
            });
            WatchedEdit edit;
            if (kind == 0)
                edit.Create(root, "n");
            else if (kind == 1)
                edit.Create(root, "n", {{"x", "y"}});
            else if (kind == 2)
                edit.SetValue(root->GetFirstChild("a"), "v");
            else
                edit.Remove(root, root->GetFirstChild("a"));
            QCOMPARE(edit.IsAlone(), !called);
        }
    }
}

// A slot that takes the child out itself leaves less to do; what it changes besides counts all the
// same.
void WatchedEditTest::aChangeThatMakesUpForAnotherIsNoticed()
{
    for (int further = 0; further < 20; ++further) {
        TestControl control;
        SCLElement* root = control.OpenRoot("<SCL><a><P/><P/><P/><P/><P/><P/></a></SCL>");
        SCLElement* taken = nullptr;
        QObject::connect(root->GetDocument(), &SCLDocument::sigDeleteElement,
                         [&](SCLElement* element) {
                             taken = element;
                             root->DetachChild(element, false);
                             for (int i = 0; i < further; ++i)
                                 root->SetValue(QString::number(i), false);
                         });
        WatchedEdit edit;
        edit.Remove(root, root->GetFirstChild("a"));
        QVERIFY(!edit.IsAlone());
        delete taken;
    }
}

void WatchedEditTest::aChildThatASlotTookOutIsNotGiven()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL/>");
    SCLElement* taken = nullptr;
    QObject::connect(root->GetDocument(), &SCLDocument::sigAddElement, [&](SCLElement* element) {
        taken = element;
        root->DetachChild(element, false);
    });
    WatchedEdit edit;
    QVERIFY(edit.Create(root, "n") == nullptr);
    QVERIFY(!edit.HasFailed());
    QVERIFY(!edit.IsAlone());
    delete taken;
}

void WatchedEditTest::aRefusedChildIsAFailure()
{
    TestControl control;
    WatchedEdit edit;
    QVERIFY(edit.Create(control.OpenRoot("<SCL/>"), "") == nullptr);
    QVERIFY(edit.HasFailed());
}

QTEST_MAIN(WatchedEditTest)
#include "WatchedEditTest.moc"
