// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcSiblings.h>

#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcContentIds.h>
#include <corvane/crc/CrcElement.h>
#include <corvane/help/SclNames.h>

#include <QHash>
#include <QQueue>

namespace Corvane::Internal
{

namespace
{

constexpr int none = -1;

const QString wiringTag = QStringLiteral("intAddr");

// The attributes that name an element of a tag, all of them together.
const QHash<QString, QStringList>& NamingAttributes()
{
    static const QStringList own;
    static const QHash<QString, QStringList> attributes{
        {Tag::FCDA,
         {Attribute::ldInst, Attribute::prefix, Attribute::lnClass, Attribute::lnInst,
          Attribute::doName, Attribute::daName}},
        {Tag::GSE, {Attribute::ldInst, Attribute::cbName}},
        {Tag::SMV, {Attribute::ldInst, Attribute::cbName}},
        // Of these a control block has one.
        {Tag::GSEControl, own},
        {Tag::SampledValueControl, own},
        {Tag::ConnectedAP, own},
        {Tag::DataSet, own}};
    return attributes;
}

QStringList FirstNameOf(const CrcElement* element)
{
    for (const QString& attribute : {Attribute::name, Attribute::inst, Attribute::type}) {
        const QString name = ValueOf(element, attribute);
        if (!name.isEmpty())
            return {name};
    }
    return {};
}

// What elements that belong together have in common.
QString KeyOf(const CrcElement* element)
{
    const QChar end(0);
    QString key = element->name;
    const QStringList names = NamesOf(element);
    for (const QString& name : names)
        key += end + CanonicalValue(name);
    return key;
}

struct Sibling {
    const CrcElement* element;
    int id;
    QString key;
    // The index of the one on the other side that it belongs to.
    int partner;
    // The left index of the last pair before it in its group.
    int stretch;
};

using Siblings = std::vector<Sibling>;

Siblings SiblingsBelow(const CrcElement* parent, const CrcContentIds& ids)
{
    Siblings siblings;
    const QList<const CrcElement*> children = CanonicalChildrenOf(parent);
    for (const CrcElement* child : children)
        siblings.push_back({child, ids.Of(child), KeyOf(child), none, none});
    return siblings;
}

// Pairs those without partner that have the same text, in order. A null text fits none.
template <typename TextOf>
void PairBy(const TextOf& textOf, Siblings& left, Siblings& right)
{
    QHash<QString, QQueue<int>> waiting;
    for (std::size_t i = 0; i < right.size(); ++i) {
        if (right[i].partner == none)
            waiting[textOf(right[i])].enqueue(static_cast<int>(i));
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        const QString text = left[i].partner == none ? textOf(left[i]) : QString();
        const auto fitting = text.isNull() ? waiting.end() : waiting.find(text);
        if (fitting == waiting.end() || fitting->isEmpty())
            continue;
        left[i].partner = fitting->dequeue();
        right[static_cast<std::size_t>(left[i].partner)].partner = static_cast<int>(i);
    }
}

QString Numbered(const QString& text, int number)
{
    return text.isNull() ? text : text + QChar(0) + QString::number(number);
}

template <typename GroupOf>
void MarkStretches(const GroupOf& groupOf, Siblings& siblings, bool isLeft)
{
    QHash<QString, int> latest;
    for (std::size_t i = 0; i < siblings.size(); ++i) {
        Sibling& sibling = siblings[i];
        const QString group = groupOf(sibling);
        sibling.stretch = latest.value(group, none);
        if (sibling.partner != none)
            latest[group] = isLeft ? static_cast<int>(i) : sibling.partner;
    }
}

// Pairs those of a group that stand between the same pairs of it, so that no two pairs cross.
template <typename GroupOf>
void PairInStretches(const GroupOf& groupOf, Siblings& left, Siblings& right)
{
    MarkStretches(groupOf, left, true);
    MarkStretches(groupOf, right, false);
    PairBy([&](const Sibling& s) { return Numbered(groupOf(s), s.stretch); }, left, right);
}

void Pair(Siblings& left, Siblings& right)
{
    // Equal ones first, so that one that was put in or taken out does not make all behind it differ.
    PairBy([](const Sibling& s) { return Numbered(s.key, s.id); }, left, right);
    PairInStretches([](const Sibling& s) { return s.key; }, left, right);
    // What a member is wired to has changed, not come and gone.
    PairInStretches(
        [](const Sibling& s) { return s.element->name == wiringTag ? wiringTag : QString(); }, left,
        right);
}

std::vector<const Sibling*> Paired(const Siblings& siblings)
{
    std::vector<const Sibling*> paired;
    for (const Sibling& sibling : siblings) {
        if (sibling.partner != none)
            paired.push_back(&sibling);
    }
    return paired;
}

// The order differs if the right side would still look different with all pairs made equal.
CrcSiblingStep FirstOutOfOrder(const Siblings& left, const Siblings& right)
{
    const std::vector<const Sibling*> inLeftOrder = Paired(left);
    const std::vector<const Sibling*> inRightOrder = Paired(right);
    for (std::size_t i = 0; i < inLeftOrder.size(); ++i) {
        const Sibling& partner = right[static_cast<std::size_t>(inLeftOrder[i]->partner)];
        if (partner.id != inRightOrder[i]->id)
            return {CrcSiblingStep::Kind::Order, inLeftOrder[i]->element, inRightOrder[i]->element,
                    static_cast<int>(i) + 1};
    }
    return {CrcSiblingStep::Kind::Order, nullptr, nullptr, 0};
}

} // namespace

QString ValueOf(const CrcElement* element, const QString& attribute)
{
    for (const CrcAttribute* candidate : element->attributes) {
        if (candidate->name == attribute)
            return candidate->value;
    }
    return {};
}

QStringList NamesOf(const CrcElement* element)
{
    const auto attributes = NamingAttributes().constFind(element->name);
    if (attributes == NamingAttributes().constEnd())
        return FirstNameOf(element);
    QStringList names;
    for (const QString& attribute : *attributes)
        names.append(ValueOf(element, attribute));
    return names;
}

std::vector<CrcSiblingStep> CompareSiblings(const CrcElement* left, const CrcElement* right,
                                            const CrcContentIds& ids)
{
    using Kind = CrcSiblingStep::Kind;
    Siblings onLeft = SiblingsBelow(left, ids);
    Siblings onRight = SiblingsBelow(right, ids);
    Pair(onLeft, onRight);
    const CrcSiblingStep order = FirstOutOfOrder(onLeft, onRight);

    std::vector<CrcSiblingStep> steps;
    std::size_t next = 0;
    const auto passRight = [&] {
        for (; next < onRight.size() && onRight[next].partner == none; ++next)
            steps.push_back({Kind::OneSide, nullptr, onRight[next].element, 0});
    };
    for (const Sibling& sibling : onLeft) {
        if (sibling.partner == none) {
            steps.push_back({Kind::OneSide, sibling.element, nullptr, 0});
            continue;
        }
        passRight();
        if (sibling.element == order.left)
            steps.push_back(order);
        const Sibling& partner = onRight[static_cast<std::size_t>(sibling.partner)];
        if (sibling.id != partner.id)
            steps.push_back({Kind::Pair, sibling.element, partner.element, 0});
        ++next;
    }
    passRight();
    return steps;
}

} // namespace Corvane::Internal
