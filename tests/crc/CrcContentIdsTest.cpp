// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcContentIds.h>
#include <corvane/crc/CrcElement.h>

#include <QtTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Internal;

namespace
{

using Node = std::unique_ptr<CrcElement>;

Node Element(const QString& name, const QString& text = {},
             CrcGenerator::GeneratorType type = CrcGenerator::GeneratorBoth)
{
    return std::make_unique<CrcElement>(type, name, text);
}

Node With(Node parent, Node child)
{
    parent->children.append(child.release());
    return parent;
}

Node With(Node element, const QString& name, const QString& value,
          CrcGenerator::GeneratorType type = CrcGenerator::GeneratorBoth)
{
    element->AddAttribute(type, name, value);
    return element;
}

bool HaveOneId(const CrcElement* left, const CrcElement* right)
{
    CrcContentIds ids;
    ids.Add(left);
    ids.Add(right);
    return ids.Of(left) == ids.Of(right);
}

bool HaveOneContent(const CrcElement* left, const CrcElement* right)
{
    QByteArray leftContent;
    QByteArray rightContent;
    CanonicalCrc(left, &leftContent);
    CanonicalCrc(right, &rightContent);
    return leftContent == rightContent;
}

} // namespace

class CrcContentIdsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalContentsHaveOneId();
    void unequalContentsHaveTwoIds();
    void elementsOfOneTreeAreNumberedAlike();
    void anyDepthIsNumbered();
};

void CrcContentIdsTest::equalContentsHaveOneId()
{
    const auto compare = [](const Node& left, const Node& right) {
        QVERIFY(HaveOneContent(left.get(), right.get()));
        QVERIFY(HaveOneId(left.get(), right.get()));
    };
    constexpr auto readable = CrcGenerator::GeneratorReadable;
    compare(Element("a"), Element("a"));
    compare(Element("a", "x"), Element("a", "x\x01"));
    compare(Element("a", "b c"), Element("a", "b@wspace@c"));
    compare(Element("a b"), Element("a_b"));
    compare(With(Element("a"), "n", "@wspace "), With(Element("a"), "n", " wspace@"));
    compare(With(Element("a"), "n", "v", readable), Element("a"));
    compare(With(Element("a", "x"), Element("b")), With(Element("a", "y"), Element("b")));
    compare(With(Element("a"), Element("b", "x", readable)), Element("a"));
    compare(With(Element("a", "x"), Element("b", "x", readable)), Element("a"));
}

void CrcContentIdsTest::unequalContentsHaveTwoIds()
{
    const auto compare = [](const Node& left, const Node& right) {
        QVERIFY(!HaveOneContent(left.get(), right.get()));
        QVERIFY(!HaveOneId(left.get(), right.get()));
    };
    compare(Element("a"), Element("b"));
    compare(Element("a", "x"), Element("a"));
    compare(With(Element("a"), "x", "y"), Element("a"));
    compare(With(Element("a"), "x", ""), Element("a"));
    compare(With(Element("a"), "xy", "z"), With(Element("a"), "x", "yz"));
    compare(With(Element("a"), "x", "y"), Element("a", "xy"));
    compare(With(Element("a"), "x", "1:"), With(Element("a"), "x1", ":"));
    compare(With(Element("a"), Element("b")), Element("a", "b"));
    compare(With(With(Element("a"), Element("b")), Element("c")),
            With(With(Element("a"), Element("c")), Element("b")));
    compare(With(With(Element("a"), Element("b")), Element("c")),
            With(Element("a"), With(Element("b"), Element("c"))));
}

void CrcContentIdsTest::elementsOfOneTreeAreNumberedAlike()
{
    const Node tree = With(With(With(Element("a"), Element("b")), Element("c")), Element("b"));
    CrcContentIds ids;
    ids.Add(tree.get());

    QCOMPARE(ids.Of(tree->children.at(0)), ids.Of(tree->children.at(2)));
    QVERIFY(ids.Of(tree->children.at(0)) != ids.Of(tree->children.at(1)));
}

void CrcContentIdsTest::anyDepthIsNumbered()
{
    constexpr int depth = 200000;
    const auto nest = [](const QString& text) {
        Node root = Element("a");
        CrcElement* inner = root.get();
        for (int i = 0; i < depth; ++i) {
            inner->children.append(Element("a", i + 1 == depth ? text : QString()).release());
            inner = inner->children.constFirst();
        }
        return root;
    };

    QVERIFY(HaveOneId(nest("x").get(), nest("x").get()));
    QVERIFY(!HaveOneId(nest("x").get(), nest("y").get()));
}

QTEST_GUILESS_MAIN(CrcContentIdsTest)
#include "CrcContentIdsTest.moc"
