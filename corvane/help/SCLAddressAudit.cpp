// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLAddressAudit.h>

#include <corvane/elements/SCLElement.h>
#include <corvane/help/AddressPool.h>
#include <corvane/help/ControlKind.h>
#include <corvane/help/ShownText.h>
#include <corvane/help/Walks.h>

#include <QHash>
#include <QPair>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
namespace ParameterType = Internal::ParameterType;
using Internal::ControlKind;
using Internal::ShownText;
using Kind = SCLAddressAudit::Kind;
using Parameter = SCLAddressAudit::Parameter;
using Problem = SCLAddressAudit::Problem;
using Severity = SCLAddressAudit::Severity;
using Value = SCLAddressAudit::Value;

namespace
{

constexpr qint64 gooseMac = 0x010CCD010000;
constexpr qint64 sampledValuesMac = 0x010CCD040000;
constexpr qint64 multicastBit = qint64(1) << 40;
constexpr int firstTripAppId = 0x8000;
constexpr int unsetAppId = 0;

const ControlKind& Traits(Kind kind)
{
    return kind == Kind::Goose ? Internal::Goose() : Internal::SampledValues();
}

constexpr std::array<Kind, 2> kinds = {Kind::Goose, Kind::SampledValues};

// A parameter as it is read from a P and kept in an entry.
struct Field {
    Parameter parameter;
    const QString& type;
    Value SCLAddressAudit::Entry::*value;
    bool isNeeded;
};

const std::array<Field, 4>& Fields()
{
    using Entry = SCLAddressAudit::Entry;
    static const std::array<Field, 4> fields = {
        {{Parameter::MacAddress, ParameterType::MacAddress, &Entry::macAddress, true},
         {Parameter::AppId, ParameterType::AppId, &Entry::appId, true},
         {Parameter::VlanId, ParameterType::VlanId, &Entry::vlanId, false},
         {Parameter::VlanPriority, ParameterType::VlanPriority, &Entry::vlanPriority, false}}};
    return fields;
}

int DigitOf(QChar character)
{
    const char16_t c = character.unicode();
    if (c >= '0' && c <= '9')
        return c - '0';
    const char16_t lower = c | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

// Longer texts are no address, however they are read.
qint64 ReadDigits(const QString& text, int base)
{
    constexpr int longest = 12;
    if (text.isEmpty() || text.size() > longest)
        return -1;
    qint64 number = 0;
    for (const QChar character : text) {
        const int digit = DigitOf(character);
        if (digit >= base)
            return -1;
        number = number * base + digit;
    }
    return number;
}

qint64 ReadMac(const QString& text)
{
    constexpr qint64 groupCount = 6;
    const QChar separator = text.contains(QLatin1Char(':')) ? QLatin1Char(':') : QLatin1Char('-');
    if (!text.contains(separator))
        return text.size() == 2 * groupCount ? ReadDigits(text, 16) : -1;
    if (text.size() > 3 * groupCount)
        return -1;
    const QStringList groups = text.split(separator, Qt::KeepEmptyParts);
    qint64 number = groups.size() == groupCount ? 0 : -1;
    for (const QString& group : groups) {
        const qint64 byte = group.size() <= 2 ? ReadDigits(group, 16) : -1;
        number = number < 0 || byte < 0 ? -1 : number * 256 + byte;
    }
    return number;
}

qint64 Read(Parameter parameter, const QString& text)
{
    if (parameter == Parameter::MacAddress)
        return ReadMac(text);
    return ReadDigits(text, parameter == Parameter::VlanPriority ? 10 : 16);
}

bool IsBetween(qint64 number, qint64 first, qint64 last)
{
    return number >= first && number <= last;
}

QString NameOf(Kind kind)
{
    return kind == Kind::Goose ? QStringLiteral("GOOSE") : QStringLiteral("sampled values");
}

// The ranges that a number may be in, as text; empty if it is in one of them.
QString MissedRange(Kind kind, Parameter parameter, qint64 number)
{
    const bool goose = kind == Kind::Goose;
    switch (parameter) {
    case Parameter::MacAddress: {
        const qint64 first = goose ? gooseMac : sampledValuesMac;
        return IsBetween(number, first, first + 0x1FF)
                   ? QString()
                   : SCLAddressAudit::TextOf(parameter, first) + QStringLiteral(" to ") +
                         SCLAddressAudit::TextOf(parameter, first + 0x1FF);
    }
    case Parameter::AppId:
        if (goose)
            return IsBetween(number, 0, 0x3FFF) || IsBetween(number, firstTripAppId, 0xBFFF)
                       ? QString()
                       : QStringLiteral("0000 to 3FFF and 8000 to BFFF");
        return IsBetween(number, 0x4000, 0x7FFF) ? QString() : QStringLiteral("4000 to 7FFF");
    case Parameter::VlanId:
        return IsBetween(number, 0, 0xFFF) ? QString() : QStringLiteral("000 to FFF");
    default:
        return IsBetween(number, 0, 7) ? QString() : QStringLiteral("0 to 7");
    }
}

// What an entry and a control block have in common: the names of IED and access point, and those of
// device and block.
using Names = QPair<QPair<QString, QString>, QPair<QString, QString>>;

Names NamesOfEntry(SCLElement* connectedAP, SCLElement* entry)
{
    return {{connectedAP->GetAttribute(Attribute::iedName),
             connectedAP->GetAttribute(Attribute::apName)},
            {entry->GetAttribute(Attribute::ldInst), entry->GetAttribute(Attribute::cbName)}};
}

// "IED.AP LD/cb"
QString Shown(const Names& names)
{
    return ShownText(names.first.first) + QLatin1Char('.') + ShownText(names.first.second) +
           QLatin1Char(' ') + ShownText(names.second.first) + QLatin1Char('/') +
           ShownText(names.second.second);
}

} // namespace

/// Fills an audit.
class SCLAddressAudit::Reader
{
public:
    Reader(SCLAddressAudit& audit, SCLElement* root) : m_audit(audit), m_pRoot(root) {}

    void Read();

private:
    struct Control {
        Kind kind;
        SCLElement* element;
        Names names;
    };
    using Places = QSet<QPair<int, Names>>;

    void ReadControls();
    void ReadControls(SCLElement* accessPoint, const QPair<QString, QString>& pointName);
    void ReadEntries();
    Entry ReadEntry(Kind kind, SCLElement* element, SCLElement* connectedAP) const;
    void ReadParameters(Entry& entry);
    void Judge(const Entry& entry);
    void JudgeValue(const Entry& entry, const Field& field);
    void JudgeNumber(const Entry& entry, const Field& field);
    void JudgeUniqueness(int index, const Field& field);
    void JudgeControl(const Entry& entry);
    void JudgeControls();
    void FillRanges();
    Range FilledRange(const char* name, Parameter parameter, qint64 first, qint64 last) const;
    void Add(Problem problem, Severity severity, Parameter parameter, SCLElement* element,
             const QString& text, SCLElement* other = nullptr);
    QString ShownEntry(const Entry& entry) const
    {
        return Shown(NamesOfEntry(entry.connectedAP, entry.element));
    }

    SCLAddressAudit& m_audit;
    SCLElement* m_pRoot;
    QHash<QPair<QString, QString>, SCLElement*> m_accessPoints;
    QHash<QPair<SCLElement*, QPair<int, QPair<QString, QString>>>, SCLElement*> m_controlOf;
    QList<Control> m_controls;
    Places m_places;
    QHash<QPair<SCLElement*, SCLElement*>, SCLElement*> m_entryOf;
    QHash<qint64, int> m_firstByMac;
    QHash<qint64, int> m_firstByAppId;
};

void SCLAddressAudit::Reader::Read()
{
    if (m_pRoot) {
        ReadControls();
        ReadEntries();
        JudgeControls();
    }
    FillRanges();
}

// Of access points and control blocks with the same names the first counts, as in look-ups.
void SCLAddressAudit::Reader::ReadControls()
{
    const QList<SCLElement*> ieds = m_pRoot->FindChildByType(Tag::IED, false);
    for (SCLElement* ied : ieds) {
        const QList<SCLElement*> accessPoints = ied->FindChildByType(Tag::AccessPoint, false);
        for (SCLElement* accessPoint : accessPoints) {
            const QPair<QString, QString> name{ied->GetAttribute(Attribute::name),
                                               accessPoint->GetAttribute(Attribute::name)};
            if (!m_accessPoints.contains(name))
                m_accessPoints.insert(name, accessPoint);
            ReadControls(accessPoint, name);
        }
    }
}

void SCLAddressAudit::Reader::ReadControls(SCLElement* accessPoint,
                                           const QPair<QString, QString>& pointName)
{
    const QList<SCLElement*> lDevices = Internal::LDevicesOfFirstServer(accessPoint);
    for (SCLElement* lDevice : lDevices) {
        const QString inst = lDevice->GetAttribute(Attribute::inst);
        for (const Kind kind : kinds) {
            const QList<SCLElement*> controls =
                Internal::ControlBlocksOfFirstLN0(lDevice, Traits(kind).controlTag);
            for (SCLElement* control : controls) {
                const QPair<QString, QString> name{inst, control->GetAttribute(Attribute::name)};
                SCLElement*& first = m_controlOf[{accessPoint, {static_cast<int>(kind), name}}];
                if (!first)
                    first = control;
                m_controls.append({kind, control, {pointName, name}});
            }
        }
    }
}

void SCLAddressAudit::Reader::ReadEntries()
{
    SCLElement* communication = m_pRoot->GetFirstChild(Tag::Communication);
    const QList<SCLElement*> connectedAPs = Internal::ConnectedAPsBySubNetwork(communication);
    for (SCLElement* connectedAP : connectedAPs) {
        for (const Kind kind : kinds) {
            const QList<SCLElement*> elements =
                connectedAP->FindChildByType(Traits(kind).networkTag, false);
            for (SCLElement* element : elements) {
                m_audit.m_entries.append(ReadEntry(kind, element, connectedAP));
                ReadParameters(m_audit.m_entries.last());
                Judge(m_audit.m_entries.constLast());
            }
        }
    }
}

SCLAddressAudit::Entry SCLAddressAudit::Reader::ReadEntry(Kind kind, SCLElement* element,
                                                          SCLElement* connectedAP) const
{
    const Names names = NamesOfEntry(connectedAP, element);
    Entry entry;
    entry.kind = kind;
    entry.element = element;
    entry.subNetwork = connectedAP->GetParent(QString());
    entry.connectedAP = connectedAP;
    entry.controlBlock = m_controlOf.value(
        {m_accessPoints.value(names.first), {static_cast<int>(kind), names.second}});
    return entry;
}

void SCLAddressAudit::Reader::ReadParameters(Entry& entry)
{
    SCLElement* address = entry.element->GetFirstChild(Tag::Address);
    const QList<SCLElement*> parameters =
        address ? address->FindChildByType(Tag::P, false) : QList<SCLElement*>();
    QSet<int> stated;
    for (SCLElement* parameter : parameters) {
        const QString type = parameter->GetAttribute(Attribute::type);
        for (const Field& field : Fields()) {
            if (type != field.type)
                continue;
            const QString text = parameter->GetValue().trimmed();
            entry.*field.value = {text, Corvane::Read(field.parameter, text)};
            const int key = static_cast<int>(field.parameter);
            if (stated.contains(key))
                Add(Problem::StatedTwice, Severity::Warning, field.parameter, entry.element,
                    QStringLiteral("%1 states %2 more than once.")
                        .arg(ShownEntry(entry), field.type));
            stated.insert(key);
        }
    }
}

void SCLAddressAudit::Reader::Judge(const Entry& entry)
{
    const int index = static_cast<int>(m_audit.m_entries.size()) - 1;
    for (const Field& field : Fields()) {
        JudgeValue(entry, field);
        JudgeUniqueness(index, field);
    }
    JudgeControl(entry);
}

void SCLAddressAudit::Reader::JudgeValue(const Entry& entry, const Field& field)
{
    const Value& value = entry.*field.value;
    if (value.IsReadable())
        JudgeNumber(entry, field);
    else if (!value.text.isEmpty())
        Add(Problem::Unreadable, Severity::Error, field.parameter, entry.element,
            QStringLiteral("%1: \"%2\" is no %3.")
                .arg(ShownEntry(entry), ShownText(value.text), field.type));
    else if (field.isNeeded)
        Add(Problem::Missing, Severity::Error, field.parameter, entry.element,
            QStringLiteral("%1 has no %2.").arg(ShownEntry(entry), field.type));
}

void SCLAddressAudit::Reader::JudgeNumber(const Entry& entry, const Field& field)
{
    const bool isMac = field.parameter == Parameter::MacAddress;
    const Value& value = entry.*field.value;
    const QString usual = TextOf(field.parameter, value.number);
    const QString missed = MissedRange(entry.kind, field.parameter, value.number);
    if (isMac && (value.number & multicastBit) == 0)
        Add(Problem::NotMulticast, Severity::Error, field.parameter, entry.element,
            QStringLiteral("%1: %2 is no multicast address.").arg(ShownEntry(entry), usual));
    else if (!missed.isEmpty())
        Add(Problem::OutOfRange, isMac ? Severity::Warning : Severity::Error, field.parameter,
            entry.element,
            QStringLiteral("%1: %2 %3 is outside the range of %4, %5.")
                .arg(ShownEntry(entry), field.type, usual, NameOf(entry.kind), missed));
    if (value.text != usual)
        Add(Problem::UnusualForm, Severity::Warning, field.parameter, entry.element,
            QStringLiteral("%1: %2 \"%3\" should be written %4.")
                .arg(ShownEntry(entry), field.type, ShownText(value.text), usual));
}

void SCLAddressAudit::Reader::JudgeUniqueness(int index, const Field& field)
{
    const Entry& entry = m_audit.m_entries.at(index);
    const Value& value = entry.*field.value;
    if (!field.isNeeded || !value.IsReadable())
        return;
    QHash<qint64, int>& firstOf =
        field.parameter == Parameter::MacAddress ? m_firstByMac : m_firstByAppId;
    const auto found = firstOf.constFind(value.number);
    if (found == firstOf.constEnd()) {
        firstOf.insert(value.number, index);
        return;
    }
    const Entry& first = m_audit.m_entries.at(*found);
    if (entry.controlBlock && entry.controlBlock == first.controlBlock)
        return;
    Add(Problem::Duplicate, Severity::Error, field.parameter, entry.element,
        QStringLiteral("%1: %2 %3 is that of %4, too.")
            .arg(ShownEntry(entry), field.type, TextOf(field.parameter, value.number),
                 ShownEntry(first)),
        first.element);
}

void SCLAddressAudit::Reader::JudgeControl(const Entry& entry)
{
    m_places.insert({static_cast<int>(entry.kind), NamesOfEntry(entry.connectedAP, entry.element)});
    if (!entry.controlBlock) {
        Add(Problem::EntryWithoutControlBlock, Severity::Error, Parameter::None, entry.element,
            QStringLiteral("%1 has no %2.").arg(ShownEntry(entry), Traits(entry.kind).controlTag));
        return;
    }
    SCLElement*& first = m_entryOf[{entry.connectedAP, entry.controlBlock}];
    if (!first)
        first = entry.element;
    else
        Add(Problem::RepeatedEntry, Severity::Warning, Parameter::None, entry.element,
            QStringLiteral("%1 has another entry in the same ConnectedAP.").arg(ShownEntry(entry)),
            first);
}

void SCLAddressAudit::Reader::JudgeControls()
{
    for (const Control& control : std::as_const(m_controls)) {
        if (m_places.contains({static_cast<int>(control.kind), control.names}))
            continue;
        const bool sends = !control.element->GetAttribute(Attribute::datSet).isEmpty();
        Add(Problem::ControlBlockWithoutEntry, sends ? Severity::Error : Severity::Warning,
            Parameter::None, control.element,
            QStringLiteral("%1 has no %2, and so no address.")
                .arg(Shown(control.names), Traits(control.kind).networkTag));
    }
}

SCLAddressAudit::Range SCLAddressAudit::Reader::FilledRange(const char* name, Parameter parameter,
                                                            qint64 first, qint64 last) const
{
    const QHash<qint64, int>& taken =
        parameter == Parameter::MacAddress ? m_firstByMac : m_firstByAppId;
    Range range{QString::fromLatin1(name), parameter, first, last, 0, -1};
    for (qint64 number = first; number <= last; ++number) {
        if (taken.contains(number))
            ++range.used;
        else if (range.firstFree < 0 && number != unsetAppId)
            range.firstFree = number;
    }
    return range;
}

void SCLAddressAudit::Reader::FillRanges()
{
    m_audit.m_ranges = {
        FilledRange("GOOSE MAC-Address", Parameter::MacAddress, gooseMac, gooseMac + 0x1FF),
        FilledRange("SV MAC-Address", Parameter::MacAddress, sampledValuesMac,
                    sampledValuesMac + 0x1FF),
        FilledRange("GOOSE APPID", Parameter::AppId, 0, 0x3FFF),
        FilledRange("GOOSE APPID, type 1A", Parameter::AppId, firstTripAppId, 0xBFFF),
        FilledRange("SV APPID", Parameter::AppId, 0x4000, 0x7FFF)};
}

void SCLAddressAudit::Reader::Add(Problem problem, Severity severity, Parameter parameter,
                                  SCLElement* element, const QString& text, SCLElement* other)
{
    m_audit.m_findings.append({problem, severity, parameter, element, other, text});
}

SCLAddressAudit::SCLAddressAudit(SCLElement* root)
{
    Reader(*this, root).Read();
}

bool SCLAddressAudit::HasErrors() const
{
    return std::any_of(m_findings.constBegin(), m_findings.constEnd(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

QString SCLAddressAudit::TextOf(Parameter parameter, qint64 number)
{
    const auto hex = [number](int width) {
        return QStringLiteral("%1").arg(number, width, 16, QLatin1Char('0')).toUpper();
    };
    if (number < 0)
        return {};
    switch (parameter) {
    case Parameter::MacAddress: {
        QString text = hex(12);
        for (int position = 10; position > 0; position -= 2)
            text.insert(position, QLatin1Char('-'));
        return text;
    }
    case Parameter::AppId:
        return hex(4);
    case Parameter::VlanId:
        return hex(3);
    case Parameter::VlanPriority:
        return QString::number(number);
    case Parameter::None:
        break;
    }
    return {};
}

} // namespace Corvane
