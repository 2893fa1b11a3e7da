// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcSentence.h>

#include <corvane/crc/CrcPath.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/ShownText.h>

#include <QHash>

#include <algorithm>

namespace Corvane::Internal
{

namespace
{

using Difference = SCLCrcComparison::Difference;
using Change = SCLCrcComparison::Change;
using Meaning = SCLCrcComparison::Meaning;

using Words = QHash<QString, QString>;

// Filled in all at once, so that a "%1" in a name stays what it is.
template <typename... Texts>
QString Filled(const char* pattern, const Texts&... texts)
{
    return QString::fromLatin1(pattern).arg(texts...);
}

bool IsPlain(const QString& text)
{
    return std::none_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.isSpace() || c == QLatin1Char('"') || c == QLatin1Char(',');
    });
}

QString Shown(const QString& value)
{
    if (value.isNull())
        return QStringLiteral("not given");
    if (value.isEmpty())
        return QStringLiteral("empty");
    const QString cleaned = ShownText(value);
    return IsPlain(cleaned) ? cleaned : QLatin1Char('"') + cleaned + QLatin1Char('"');
}

QString ShownWiring(const QString& intAddr)
{
    if (intAddr.isNull())
        return QStringLiteral("not wired");
    return QStringLiteral("wired to ") +
           (intAddr.isEmpty() ? QStringLiteral("an input without intAddr") : Shown(intAddr));
}

// The words of engineers for attributes whose names leave in doubt what they are.
QString AttributeWords(const QString& name)
{
    static const Words words{
        {QStringLiteral("appID"), QStringLiteral("GOOSE identifier (appID)")},
        {QStringLiteral("smvID"), QStringLiteral("SV identifier (smvID)")},
        {QStringLiteral("confRev"), QStringLiteral("configuration revision (confRev)")},
        {QStringLiteral("sAddr"), QStringLiteral("short address (sAddr)")},
        {Attribute::bType, QStringLiteral("basic type (bType)")},
        {Attribute::datSet, QStringLiteral("data set name (datSet)")}};
    return words.value(name, QStringLiteral("attribute ") + ShownText(name));
}

QString AddressWords(const QString& type)
{
    static const Words words{{QStringLiteral("MAC-Address"), QStringLiteral("MAC address")},
                             {QStringLiteral("VLAN-ID"), QStringLiteral("VLAN ID")},
                             {QStringLiteral("VLAN-PRIORITY"), QStringLiteral("VLAN priority")},
                             {QStringLiteral("APPID"), QStringLiteral("APPID")}};
    return words.value(type, QStringLiteral("address entry ") + ShownText(type));
}

// What a path leads to, with the words that a sentence about it needs.
class Place
{
public:
    explicit Place(const CrcPath& path) : m_path(path) {}

    QString Itself() const;
    QString Text() const;
    QString AttributeOf(const QString& name) const;
    QString Children() const;
    QString ControlBlock() const;
    QString Member() const;

private:
    QString OfControlBlock(const QString& what) const
    {
        return what + QStringLiteral(" of ") + ControlBlock();
    }
    QString Part() const;
    QString Data() const;

    const CrcPath& m_path;
};

// "sent GOOSE E01F1PIGO/LLN0.gocb0"
QString Place::ControlBlock() const
{
    return (m_path.IsSent() ? QStringLiteral("sent ") : QStringLiteral("received ")) +
           (m_path.IsGoose() ? QStringLiteral("GOOSE ") : QStringLiteral("SV ")) +
           ShownText(m_path.ControlBlock());
}

// "data set member PIGO/PTRC1.Tr.general of sent GOOSE ..."
QString Place::Member() const
{
    return OfControlBlock(QStringLiteral("data set member ") + m_path.MemberWords());
}

// "MinTime of sent GOOSE ...", "PhysConn Connection > P Port at the access point of sent GOOSE ..."
QString Place::Part() const
{
    const QString words = m_path.WordsOfPart();
    switch (m_path.RoleAbovePart()) {
    case CrcRole::ControlBlock:
        return OfControlBlock(words + QStringLiteral(" in the control block"));
    case CrcRole::AccessPoint:
        return OfControlBlock(words + QStringLiteral(" at the access point"));
    case CrcRole::DataSet:
        return OfControlBlock(words + QStringLiteral(" in the data set"));
    default:
        return OfControlBlock(words);
    }
}

// "Tr > general of data set member ...", "Ind1 > stVal at input ..., which takes data set member
// ..."
QString Place::Data() const
{
    if (m_path.IsBehindWiring())
        return Filled("%1 at %2, which takes %3,", m_path.WordsOfData(), m_path.WiringWords(),
                      Member());
    return Filled("%1 of %2", m_path.WordsOfData(), Member());
}

QString Place::Itself() const
{
    switch (m_path.Role()) {
    case CrcRole::Ied:
        return QStringLiteral("the IED");
    case CrcRole::Section:
        return QStringLiteral("the ") + m_path.SectionWords();
    case CrcRole::Reference:
        return ControlBlock();
    case CrcRole::ControlBlock:
    case CrcRole::AccessPoint:
    case CrcRole::Communication:
    case CrcRole::Address:
        return OfControlBlock(QStringLiteral("the ") + m_path.LastWords());
    case CrcRole::AddressEntry:
        return OfControlBlock(AddressWords(m_path.LastWords()));
    case CrcRole::DataSet:
        return OfControlBlock(QStringLiteral("the data set"));
    case CrcRole::Member:
        return Member();
    case CrcRole::InstanceData:
        return QStringLiteral("instance data ") + Data();
    case CrcRole::Wiring:
    case CrcRole::Part:
        break;
    }
    return QStringLiteral("the element ") + Part();
}

QString Place::Text() const
{
    switch (m_path.Role()) {
    case CrcRole::AddressEntry:
        return Itself();
    case CrcRole::InstanceData:
        return QStringLiteral("the value of ") + Data();
    case CrcRole::Part:
        return QStringLiteral("the value of ") + Part();
    default:
        return QStringLiteral("the text of ") + Itself();
    }
}

QString Place::AttributeOf(const QString& name) const
{
    switch (m_path.Role()) {
    case CrcRole::ControlBlock:
        return OfControlBlock(AttributeWords(name));
    case CrcRole::InstanceData:
        return Filled("%1 of %2", AttributeWords(name), Data());
    case CrcRole::Part:
        return Filled("%1 of %2", AttributeWords(name), Part());
    case CrcRole::Ied:
    case CrcRole::DataSet:
        if (name == Attribute::name)
            return QStringLiteral("the name of ") + Itself();
        [[fallthrough]];
    default:
        return Filled("%1 of %2", AttributeWords(name), Itself());
    }
}

QString Place::Children() const
{
    switch (m_path.Role()) {
    case CrcRole::Section:
        return Filled("the control blocks of the %1", m_path.SectionWords());
    case CrcRole::DataSet:
        return QStringLiteral("the members of ") + Itself();
    case CrcRole::Member:
        return QStringLiteral("the inputs that take ") + Itself();
    case CrcRole::Address:
        return QStringLiteral("the entries of ") + Itself();
    default:
        return QStringLiteral("the children of ") + Itself();
    }
}

QString ValueSentence(const Difference& difference, const Place& place)
{
    const char* const pattern = "%1 is %2 in the first, %3 in the second.";
    if (difference.meaning == Meaning::Wiring && difference.attribute.isEmpty())
        return Filled(pattern, place.Member(), ShownWiring(difference.left),
                      ShownWiring(difference.right));
    const QString subject =
        difference.attribute.isEmpty() ? place.Text() : place.AttributeOf(difference.attribute);
    return Filled(pattern, subject, Shown(difference.left), Shown(difference.right));
}

QString OneSideSentence(const Difference& difference, const Place& place, CrcRole role)
{
    const bool isLeft = difference.change == Change::OnlyLeft;
    const QString side = isLeft ? QStringLiteral("first") : QStringLiteral("second");
    if (difference.meaning == Meaning::Wiring)
        return Filled("%1 is %2 only in the %3.", place.Member(),
                      ShownWiring(isLeft ? difference.left : difference.right), side);
    if (role == CrcRole::DataSet)
        return Filled(
            "%1 counts only in the %2: in the other one the control block lacks it, or an "
            "address to send it to.",
            place.Itself(), side);
    if (role == CrcRole::AccessPoint)
        return Filled("%1 has an address only in the %2.", place.ControlBlock(), side);
    return Filled("%1 is only in the %2.", place.Itself(), side);
}

QString OrderSentence(const Difference& difference, const Place& place)
{
    return Filled("%1 stand in another order: where the first has %2, the second has %3.",
                  place.Children(), Shown(difference.left), Shown(difference.right));
}

QString Begun(QString sentence)
{
    sentence[0] = sentence.at(0).toUpper();
    return sentence;
}

} // namespace

QString SentenceOf(const Difference& difference, const CrcPath& path)
{
    const Place place(path);
    switch (difference.change) {
    case Change::Value:
        return Begun(ValueSentence(difference, place));
    case Change::OnlyLeft:
    case Change::OnlyRight:
        return Begun(OneSideSentence(difference, place, path.Role()));
    case Change::Order:
        break;
    }
    return Begun(OrderSentence(difference, place));
}

} // namespace Corvane::Internal
