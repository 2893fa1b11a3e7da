// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/ChildTypeIndex.h>

#include <corvane/elements/SCLNamePool.h>
#include <corvane/schema/SCLElementType.h>
#include <corvane/schema/SCLGrammarPool.h>

#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <QTest>

#include <memory>

using namespace Corvane::Internal;
using namespace Corvane::Test;

class ChildTypeIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aPooledNameIsFoundByItsId();
    void theFirstOfSeveralTypesOfOneNameWins();
    void namesPooledLaterAreFoundThen();
    void otherIdsAreNotFound();
    void noNameIsPooled();
    void aNewPoolIsFollowed();
    void withoutAPoolNothingIsFound();
    void manyNamesAreAllFound();

private:
    QList<SCLElementType*> Types(const QByteArray& names);

    std::unique_ptr<TestControl> m_control;
};

void ChildTypeIndexTest::init()
{
    m_control = std::make_unique<TestControl>();
}

void ChildTypeIndexTest::cleanup()
{
    m_control.reset();
}

/// The types of a sequence of elements of these names, which a blank separates.
QList<SCLElementType*> ChildTypeIndexTest::Types(const QByteArray& names)
{
    QByteArray elements;
    for (const QByteArray& name : names.split(' '))
        elements += "<xs:element name=\"" + name + "\" type=\"xs:string\"/>";
    const QByteArray schema =
        SclSchema(GlobalElement("SCL", "<xs:sequence>" + elements + "</xs:sequence>"));
    const QString path = m_control->Folder().Write(QStringLiteral("s.xsd"), schema);
    if (!(*m_control)->RegisterSchema(path))
        return {};
    return SCLGrammarPool::Instance()->FindRootType(QStringLiteral("SCL"))->GetChildTypes();
}

void ChildTypeIndexTest::aPooledNameIsFoundByItsId()
{
    ChildTypeIndex index(Types("a b c"));
    SCLNamePool* pool = SCLNamePool::Instance();
    const unsigned short c = pool->AddTagToNamePool(QStringLiteral("c"));
    const unsigned short a = pool->AddTagToNamePool(QStringLiteral("a"));

    QCOMPARE(index.Rank(a), 0);
    QCOMPARE(index.Rank(c), 2);
}

void ChildTypeIndexTest::theFirstOfSeveralTypesOfOneNameWins()
{
    ChildTypeIndex index(Types("a b a c b"));
    SCLNamePool* pool = SCLNamePool::Instance();
    const unsigned short b = pool->AddTagToNamePool(QStringLiteral("b"));
    QCOMPARE(index.Rank(b), 1);

    const unsigned short a = pool->AddTagToNamePool(QStringLiteral("a"));

    QCOMPARE(index.Rank(a), 0);
    QCOMPARE(index.Rank(b), 1);
}

void ChildTypeIndexTest::namesPooledLaterAreFoundThen()
{
    ChildTypeIndex index(Types("a b c"));
    SCLNamePool* pool = SCLNamePool::Instance();
    const unsigned short c = pool->AddTagToNamePool(QStringLiteral("c"));
    QCOMPARE(index.Rank(c), 2);

    const unsigned short b = pool->AddTagToNamePool(QStringLiteral("b"));

    QCOMPARE(index.Rank(b), 1);
    QCOMPARE(index.Rank(c), 2);
}

void ChildTypeIndexTest::otherIdsAreNotFound()
{
    ChildTypeIndex index(Types("a"));
    SCLNamePool* pool = SCLNamePool::Instance();
    const unsigned short other = pool->AddTagToNamePool(QStringLiteral("A"));

    QCOMPARE(index.Rank(other), -1);
    QCOMPARE(index.Rank(SCLNamePool::m_uInvalidId), -1);
    QCOMPARE(index.Rank(65535), -1);
}

void ChildTypeIndexTest::noNameIsPooled()
{
    ChildTypeIndex index(Types("a b c"));
    const unsigned short last = SCLNamePool::Instance()->GetLastTagId();

    index.Rank(1);

    QCOMPARE(SCLNamePool::Instance()->GetLastTagId(), last);
    QVERIFY(SCLNamePool::Instance()->GetIdFromTag(QStringLiteral("a")) ==
            SCLNamePool::m_uInvalidId);
}

void ChildTypeIndexTest::aNewPoolIsFollowed()
{
    ChildTypeIndex index(Types("a b"));
    const unsigned short a = SCLNamePool::Instance()->AddTagToNamePool(QStringLiteral("a"));
    QCOMPARE(index.Rank(a), 0);

    SCLNamePool pool;
    const unsigned short b = pool.AddTagToNamePool(QStringLiteral("b"));

    QCOMPARE(b, a);
    QCOMPARE(index.Rank(b), 1);
}

void ChildTypeIndexTest::withoutAPoolNothingIsFound()
{
    ChildTypeIndex index(Types("a b"));
    const unsigned short a = SCLNamePool::Instance()->AddTagToNamePool(QStringLiteral("a"));
    delete SCLNamePool::Instance();

    QCOMPARE(SCLNamePool::Instance(), nullptr);
    QCOMPARE(index.Rank(a), -1);
}

void ChildTypeIndexTest::manyNamesAreAllFound()
{
    QStringList names;
    for (int i = 0; i < 500; ++i)
        names.append(QStringLiteral("n%1").arg(i));
    ChildTypeIndex index(Types(names.join(QLatin1Char(' ')).toLatin1()));

    for (int i = 499; i >= 0; --i) {
        const unsigned short id = SCLNamePool::Instance()->AddTagToNamePool(names.at(i));
        QCOMPARE(index.Rank(id), i);
    }
}

QTEST_GUILESS_MAIN(ChildTypeIndexTest)
#include "ChildTypeIndexTest.moc"
