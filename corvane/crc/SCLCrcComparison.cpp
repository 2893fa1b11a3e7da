// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/SCLCrcComparison.h>

#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcContentIds.h>
#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcPath.h>
#include <corvane/crc/CrcSentence.h>
#include <corvane/crc/CrcSiblings.h>
#include <corvane/crc/CrcTree.h>

#include <memory>
#include <utility>
#include <vector>

namespace Corvane
{

using Internal::CrcAttribute;
using Internal::CrcContentIds;
using Internal::CrcElement;
using Internal::CrcPath;
using Internal::CrcRole;
using Internal::CrcSiblingStep;
using Internal::CrcTree;

namespace
{

using Differences = QList<SCLCrcComparison::Difference>;
using Change = SCLCrcComparison::Change;
using Meaning = SCLCrcComparison::Meaning;

// A value that is there, if only an empty one.
QString Given(const QString& value)
{
    return value.isNull() ? QStringLiteral("") : value;
}

QString ShownText(const CrcElement* element)
{
    return Given(element->children.isEmpty() ? element->text : QString());
}

// Lists the differences of two trees. It keeps a stack of its own, as they may be of any depth.
class Comparer
{
public:
    Differences Compare(const CrcElement* left, const CrcElement* right);

private:
    struct Level {
        std::vector<CrcSiblingStep> steps;
        std::size_t next;
    };

    void Enter(const CrcElement* left, const CrcElement* right);
    void Leave();
    void Take(const CrcSiblingStep& step);
    void TakeOneSide(const CrcSiblingStep& step);
    void TakeOrder(const CrcSiblingStep& step);
    bool TakeRewiring(const CrcElement* left, const CrcElement* right);
    void CompareAttributes(const CrcElement* left, const CrcElement* right);
    void CompareTexts(const CrcElement* left, const CrcElement* right);
    QString ChildWords(const CrcElement* child);
    Meaning ChildMeaning(const CrcElement* child);
    void Report(Change change, const QString& attribute, const QString& left, const QString& right)
    {
        Report(m_path.MeaningOfLast(), change, attribute, left, right);
    }
    void Report(Meaning meaning, Change change, const QString& attribute, const QString& left,
                const QString& right);
    const CrcElement* Emptied(const CrcElement* element);

    Differences m_differences;
    CrcContentIds m_ids;
    CrcPath m_path;
    std::vector<Level> m_levels;
    std::vector<std::unique_ptr<CrcElement>> m_emptied;
};

Differences Comparer::Compare(const CrcElement* left, const CrcElement* right)
{
    if (!left && !right)
        return {};
    left = left ? left : Emptied(right);
    right = right ? right : Emptied(left);
    m_ids.Add(left);
    m_ids.Add(right);
    if (m_ids.Of(left) != m_ids.Of(right))
        Enter(left, right);
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        if (level.next < level.steps.size())
            Take(level.steps[level.next++]);
        else
            Leave();
    }
    return std::move(m_differences);
}

// In the order in which the canonical form shows things.
void Comparer::Enter(const CrcElement* left, const CrcElement* right)
{
    m_path.Push(left);
    if (left->name != right->name)
        Report(Change::Value, {}, left->name, right->name);
    CompareAttributes(left, right);
    CompareTexts(left, right);
    m_levels.push_back({Internal::CompareSiblings(left, right, m_ids), 0});
}

void Comparer::Leave()
{
    m_levels.pop_back();
    m_path.Pop();
}

void Comparer::Take(const CrcSiblingStep& step)
{
    switch (step.kind) {
    case CrcSiblingStep::Kind::Order:
        TakeOrder(step);
        return;
    case CrcSiblingStep::Kind::OneSide:
        TakeOneSide(step);
        return;
    case CrcSiblingStep::Kind::Pair:
        if (!TakeRewiring(step.left, step.right))
            Enter(step.left, step.right);
    }
}

// A section stands for no element of the station: what counts are its control blocks.
void Comparer::TakeOneSide(const CrcSiblingStep& step)
{
    const CrcElement* element = step.left ? step.left : step.right;
    if (m_path.Role() == CrcRole::Ied && !element->children.isEmpty()) {
        Enter(step.left ? step.left : Emptied(element), step.right ? step.right : Emptied(element));
        return;
    }
    const QString words = ChildWords(element);
    m_path.Push(element);
    if (step.left)
        Report(Change::OnlyLeft, {}, words, {});
    else
        Report(Change::OnlyRight, {}, {}, words);
    m_path.Pop();
}

void Comparer::TakeOrder(const CrcSiblingStep& step)
{
    Report(ChildMeaning(step.left), Change::Order, {}, ChildWords(step.left),
           ChildWords(step.right));
}

// What is behind another input is other data, not changed data.
bool Comparer::TakeRewiring(const CrcElement* left, const CrcElement* right)
{
    if (ChildMeaning(left) != Meaning::Wiring)
        return false;
    const QString from = Internal::WiredTo(left);
    const QString to = Internal::WiredTo(right);
    if (Internal::CanonicalValue(from) == Internal::CanonicalValue(to) &&
        from.isNull() == to.isNull())
        return false;
    Report(Meaning::Wiring, Change::Value, {}, from, to);
    return true;
}

// Both lists are in ascending order of the names.
void Comparer::CompareAttributes(const CrcElement* left, const CrcElement* right)
{
    const QList<const CrcAttribute*> onLeft = Internal::CanonicalAttributesOf(left);
    const QList<const CrcAttribute*> onRight = Internal::CanonicalAttributesOf(right);
    auto l = onLeft.cbegin();
    auto r = onRight.cbegin();
    while (l != onLeft.cend() || r != onRight.cend()) {
        if (r == onRight.cend() || (l != onLeft.cend() && (*l)->name < (*r)->name)) {
            Report(Change::Value, (*l)->name, Given((*l)->value), {});
            ++l;
        } else if (l == onLeft.cend() || (*r)->name < (*l)->name) {
            Report(Change::Value, (*r)->name, {}, Given((*r)->value));
            ++r;
        } else {
            if (Internal::CanonicalValue((*l)->value) != Internal::CanonicalValue((*r)->value))
                Report(Change::Value, (*l)->name, Given((*l)->value), Given((*r)->value));
            ++l;
            ++r;
        }
    }
}

void Comparer::CompareTexts(const CrcElement* left, const CrcElement* right)
{
    if (Internal::CanonicalTextOf(left) != Internal::CanonicalTextOf(right))
        Report(Change::Value, {}, ShownText(left), ShownText(right));
}

QString Comparer::ChildWords(const CrcElement* child)
{
    m_path.Push(child);
    QString words =
        m_path.Role() == CrcRole::Wiring ? Given(Internal::WiredTo(child)) : m_path.LastWords();
    m_path.Pop();
    return words;
}

Meaning Comparer::ChildMeaning(const CrcElement* child)
{
    m_path.Push(child);
    const Meaning meaning = m_path.MeaningOfLast();
    m_path.Pop();
    return meaning;
}

void Comparer::Report(Meaning meaning, Change change, const QString& attribute, const QString& left,
                      const QString& right)
{
    SCLCrcComparison::Difference difference;
    difference.section = m_path.SectionOfPath();
    difference.meaning = meaning;
    difference.change = change;
    difference.controlBlock = m_path.ControlBlock();
    difference.path = m_path.Words();
    difference.attribute = attribute;
    difference.left = left;
    difference.right = right;
    difference.text = Internal::SentenceOf(difference, m_path);
    m_differences.append(difference);
}

// What takes the place of an element that the other side does not have.
const CrcElement* Comparer::Emptied(const CrcElement* element)
{
    m_emptied.push_back(
        std::make_unique<CrcElement>(element->generatorType, element->name, QString()));
    for (const CrcAttribute* attribute : element->attributes)
        m_emptied.back()->AddAttribute(attribute->generatorType, attribute->name, attribute->value);
    return m_emptied.back().get();
}

QString CodeOf(const CrcTree& tree)
{
    return tree.Root() ? Internal::PrintedCrc(Internal::CanonicalCrc(tree.Root(), nullptr))
                       : QString();
}

} // namespace

SCLCrcComparison SCLCrcComparison::Of(SCLElement* left, SCLElement* right)
{
    const CrcTree leftTree(left);
    const CrcTree rightTree(right);
    SCLCrcComparison comparison;
    comparison.leftCode = CodeOf(leftTree);
    comparison.rightCode = CodeOf(rightTree);
    comparison.differences = Comparer().Compare(leftTree.Root(), rightTree.Root());
    return comparison;
}

} // namespace Corvane
