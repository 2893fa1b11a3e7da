// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcPath.h>

#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcKind.h>
#include <corvane/crc/CrcSiblings.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/ShownText.h>

#include <QStringList>

namespace Corvane::Internal
{

namespace
{

using Meaning = SCLCrcComparison::Meaning;

// Where things stand on a path.
constexpr std::size_t sectionStep = 1;
constexpr std::size_t referenceStep = 2;
constexpr std::size_t partStep = 4;
constexpr std::size_t memberStep = 4;
constexpr std::size_t wiringStep = 5;

const QString separator = QStringLiteral(" > ");

// The control block of an MMS reference, which tells the kind between dollar signs.
QString PlainReference(const QString& name)
{
    const int slash = static_cast<int>(name.indexOf(QLatin1Char('/')));
    const int begin = static_cast<int>(name.indexOf(QLatin1Char('$'), qMax(slash, 0)));
    const int end = begin < 0 ? begin : static_cast<int>(name.indexOf(QLatin1Char('$'), begin + 1));
    return end < 0 ? name : name.left(begin) + QLatin1Char('.') + name.mid(end + 1);
}

QString WordsOfMember(const CrcElement* member)
{
    const auto value = [member](const QString& name) { return ValueOf(member, name); };
    const QString daName = value(Attribute::daName);
    return value(Attribute::ldInst) + QLatin1Char('/') + value(Attribute::prefix) +
           value(Attribute::lnClass) + value(Attribute::lnInst) + QLatin1Char('.') +
           value(Attribute::doName) + (daName.isEmpty() ? daName : QLatin1Char('.') + daName);
}

QString WordsOfInstance(const CrcElement* element)
{
    const QString name = ValueOf(element, Attribute::name);
    const QString ix = ValueOf(element, QStringLiteral("ix"));
    const QString words = name.isEmpty() ? element->name : name;
    return ix.isEmpty() ? words : words + QLatin1Char('[') + ix + QLatin1Char(']');
}

QString TagAndNames(const CrcElement* element)
{
    QStringList names = NamesOf(element);
    names.removeAll(QString());
    return names.isEmpty() ? element->name
                           : element->name + QLatin1Char(' ') + names.join(QLatin1Char('/'));
}

QString WordsOfWiring(const CrcElement* wiring)
{
    const QString intAddr = WiredTo(wiring);
    if (intAddr.isNull())
        return QStringLiteral("no input");
    return QStringLiteral("input ") +
           (intAddr.isEmpty() ? QStringLiteral("without intAddr") : intAddr);
}

QString WithName(const QString& what, const CrcElement* element)
{
    const QString name = ValueOf(element, Attribute::name);
    return name.isEmpty() ? what : what + QLatin1Char(' ') + name;
}

Meaning MeaningOf(CrcRole role, Meaning above)
{
    switch (role) {
    case CrcRole::Ied:
        return Meaning::Ied;
    case CrcRole::Section:
    case CrcRole::Reference:
    case CrcRole::ControlBlock:
        return Meaning::ControlBlock;
    case CrcRole::AccessPoint:
    case CrcRole::Communication:
    case CrcRole::Address:
    case CrcRole::AddressEntry:
        return Meaning::Communication;
    case CrcRole::DataSet:
        return Meaning::DataSet;
    case CrcRole::Member:
        return Meaning::Member;
    case CrcRole::Wiring:
        return Meaning::Wiring;
    case CrcRole::InstanceData:
        return Meaning::InstanceData;
    case CrcRole::Part:
        break;
    }
    return above;
}

} // namespace

QString WiredTo(const CrcElement* wiring)
{
    const QString name = ValueOf(wiring, Attribute::name);
    if (name == QLatin1String("NULL"))
        return {};
    return name.isNull() ? QStringLiteral("") : name;
}

void CrcPath::Push(const CrcElement* element)
{
    const CrcRole role = IsEmpty() ? CrcRole::Ied : RoleBelowLast(element);
    const Meaning above = IsEmpty() ? Meaning::Ied : MeaningOfLast();
    m_steps.push_back({element, role, MeaningOf(role, above)});
}

CrcRole CrcPath::RoleBelowLast(const CrcElement* child) const
{
    const QString& tag = child->name;
    switch (Role()) {
    case CrcRole::Ied:
        return CrcRole::Section;
    case CrcRole::Section:
        return CrcRole::Reference;
    case CrcRole::Reference:
        if (tag == Tag::ConnectedAP)
            return CrcRole::AccessPoint;
        return tag == Tag::DataSet ? CrcRole::DataSet : CrcRole::ControlBlock;
    case CrcRole::AccessPoint:
        return tag == OwnTag() ? CrcRole::Communication : CrcRole::Part;
    case CrcRole::Communication:
        return tag == Tag::Address ? CrcRole::Address : CrcRole::Part;
    case CrcRole::Address:
        return tag == Tag::P ? CrcRole::AddressEntry : CrcRole::Part;
    case CrcRole::DataSet:
        return tag == Tag::FCDA ? CrcRole::Member : CrcRole::Part;
    case CrcRole::Member:
        return IsSent() ? CrcRole::InstanceData : CrcRole::Wiring;
    case CrcRole::Wiring:
    case CrcRole::InstanceData:
        return CrcRole::InstanceData;
    case CrcRole::ControlBlock:
    case CrcRole::AddressEntry:
    case CrcRole::Part:
        break;
    }
    return CrcRole::Part;
}

QString CrcPath::OwnTag() const
{
    return CrcKindOf(IsGoose()).control.networkTag;
}

CrcPath::Section CrcPath::SectionOfPath() const
{
    if (m_steps.size() <= sectionStep)
        return Section::Ied;
    const QString& tag = m_steps[sectionStep].element->name;
    if (tag == CrcKindOf(true).publications)
        return Section::GoosePublication;
    if (tag == CrcKindOf(true).subscriptions)
        return Section::GooseSubscription;
    return tag == CrcKindOf(false).publications ? Section::SampledValuePublication
                                                : Section::SampledValueSubscription;
}

bool CrcPath::IsGoose() const
{
    const Section section = SectionOfPath();
    return section == Section::GoosePublication || section == Section::GooseSubscription;
}

bool CrcPath::IsSent() const
{
    const Section section = SectionOfPath();
    return section == Section::GoosePublication || section == Section::SampledValuePublication;
}

QString CrcPath::ControlBlock() const
{
    return m_steps.size() > referenceStep
               ? PlainReference(ValueOf(m_steps[referenceStep].element, Attribute::name))
               : QString();
}

QString CrcPath::MemberWords() const
{
    return ShownText(WordsOfMember(m_steps[memberStep].element));
}

bool CrcPath::IsBehindWiring() const
{
    return m_steps.size() > wiringStep && m_steps[wiringStep].role == CrcRole::Wiring;
}

QString CrcPath::WiringWords() const
{
    return ShownText(WordsOfWiring(m_steps[wiringStep].element));
}

QString CrcPath::Words() const
{
    if (m_steps.size() <= sectionStep)
        return ShownText(LastWords());
    QString words = SectionWords();
    if (m_steps.size() > referenceStep)
        words += QLatin1Char(' ') + ShownText(ControlBlock());
    return m_steps.size() > referenceStep + 1 ? words + separator + WordsFrom(referenceStep + 1)
                                              : words;
}

QString CrcPath::SectionWords() const
{
    return (IsGoose() ? QStringLiteral("GOOSE ") : QStringLiteral("SV ")) +
           (IsSent() ? QStringLiteral("publication") : QStringLiteral("subscription"));
}

QString CrcPath::WordsOfPart() const
{
    return WordsFrom(partStep);
}

CrcRole CrcPath::RoleAbovePart() const
{
    const CrcRole role = m_steps[partStep].role;
    return role == CrcRole::Communication ? role : m_steps[partStep - 1].role;
}

QString CrcPath::WordsOfData() const
{
    return WordsFrom(IsBehindWiring() ? wiringStep + 1 : memberStep + 1);
}

// What the reader of a path knows already from what follows.
bool CrcPath::IsSilent(std::size_t index) const
{
    if (index + 1 == m_steps.size())
        return false;
    const CrcRole role = m_steps[index].role;
    return role == CrcRole::Communication ||
           (role == CrcRole::AccessPoint && m_steps[index + 1].role == CrcRole::Communication);
}

// The middle of a very long path is left out.
QString CrcPath::WordsFrom(std::size_t first) const
{
    constexpr std::size_t most = 12;
    constexpr std::size_t atEnd = 4;
    const std::size_t count = m_steps.size();
    QStringList words;
    for (std::size_t i = first; i < count; ++i) {
        if (count - first > most && i == first + most - atEnd) {
            words.append(QString(QChar(0x2026)));
            i = count - atEnd;
        }
        if (!IsSilent(i))
            words.append(ShownText(WordsOf(m_steps[i])));
    }
    return words.join(separator);
}

QString CrcPath::WordsOf(const Step& step)
{
    switch (step.role) {
    case CrcRole::Ied:
        return WithName(step.element->name, step.element);
    case CrcRole::Reference:
        return PlainReference(ValueOf(step.element, Attribute::name));
    case CrcRole::ControlBlock:
        return QStringLiteral("control block");
    case CrcRole::AccessPoint:
        return QStringLiteral("access point");
    case CrcRole::Communication:
        return QStringLiteral("communication entry");
    case CrcRole::Address:
        return QStringLiteral("address");
    case CrcRole::AddressEntry:
        return ValueOf(step.element, Attribute::type);
    case CrcRole::DataSet:
        return WithName(QStringLiteral("data set"), step.element);
    case CrcRole::Member:
        return WordsOfMember(step.element);
    case CrcRole::Wiring:
        return WordsOfWiring(step.element);
    case CrcRole::InstanceData:
        return WordsOfInstance(step.element);
    case CrcRole::Section:
    case CrcRole::Part:
        break;
    }
    return TagAndNames(step.element);
}

} // namespace Corvane::Internal
