// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLElement.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <QString>

#include <random>

namespace Corvane::Test
{

/// A random station in which sections are missing, doubled, empty or in odd places, and in which
/// ExtRefs, ClientLNs and ConnectedAPs name the IEDs A, B and C, none or nothing.
class AwkwardStation
{
public:
    explicit AwkwardStation(unsigned seed) : m_engine(seed) {}

    QByteArray Text()
    {
        return "<SCL>" + Some("Communication", [this] { return Networks(); }) +
               Many(4, [this] { return Ied(); }) + "</SCL>";
    }

private:
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_engine); }

    template <typename Content>
    QByteArray Many(int most, Content content)
    {
        QByteArray text;
        for (int count = Below(most + 1); count > 0; --count)
            text += content();
        return text;
    }

    // No, one or two elements of a tag; mostly one.
    template <typename Content>
    QByteArray Some(const QByteArray& tag, Content content)
    {
        static const int counts[] = {0, 1, 1, 1, 1, 2};
        QByteArray text;
        for (int count = counts[Below(6)]; count > 0; --count)
            text += "<" + tag + Inst() + ">" + content() + "</" + tag + ">";
        return text;
    }

    QByteArray Inst() { return " inst='" + QByteArray::number(Below(3)) + "'"; }

    QByteArray Name(const QByteArray& attribute)
    {
        static const QByteArrayList names = {"A", "A", "B", "C", "a", "", "-"};
        const QByteArray& name = names[Below(7)];
        return name == "-" ? QByteArray() : " " + attribute + "='" + name + "'";
    }

    QByteArray References(const QByteArray& tag)
    {
        return Many(3, [this, tag] { return "<" + tag + Name("iedName") + "/>"; });
    }

    QByteArray Networks()
    {
        return Many(2, [this] {
            return "<SubNetwork>" + References("ConnectedAP") + References("ExtRef") +
                   "</SubNetwork>";
        });
    }

    QByteArray Ied()
    {
        return "<IED" + Name("name") + ">" +
               Many(2,
                    [this] {
                        return "<AccessPoint>" + Some("Server", [this] { return LDevices(); }) +
                               References("ExtRef") + "</AccessPoint>";
                    }) +
               "</IED>";
    }

    QByteArray LDevices()
    {
        return Many(2, [this] {
            return "<LDevice" + Inst() + ">" + Some("LN0", [this] { return Node(); }) +
                   Many(2, [this] { return "<LN>" + Node() + "</LN>"; }) + "</LDevice>";
        });
    }

    QByteArray Node()
    {
        const QByteArray control = Name("name");
        return Some("Inputs", [this] { return References("ExtRef") + References("ClientLN"); }) +
               Many(2, [this] { return Report(); }) + "<GSEControl" + control + " appID='old'/>" +
               "<SampledValueControl" + control + "/>" + References("ExtRef");
    }

    QByteArray Report()
    {
        return "<ReportControl>" + Some("RptEnabled", [this] { return References("ClientLN"); }) +
               "</ReportControl>";
    }

    std::mt19937 m_engine;
};

/// Whether an element is the first of its tag below its parent.
inline bool IsFirstOfItsTag(SCLElement* element)
{
    SCLElement* parent = element->GetParent(QString());
    return parent && parent->GetFirstChild(element->GetTag()) == element;
}

/// Whether the tags above an element, upwards, are those of a path: "Inputs/LN0/LDevice".
inline bool IsBelow(SCLElement* element, const QString& path)
{
    const QStringList tags = path.split(QLatin1Char('/'));
    for (const QString& tag : tags) {
        element = element->GetParent(QString());
        if (!element || element->GetTag() != tag)
            return false;
    }
    return true;
}

/// Whether a reference to an IED stands where renaming and deleting an IED look for it.
///
/// \param withoutLN0 whether the LNs of an LDevice count that has no LN0.
inline bool IsFollowedReference(SCLElement* reference, bool withoutLN0)
{
    const QString tag = reference->GetTag();
    SCLElement* section = reference->GetParent(QString());
    if (tag == QLatin1String("ConnectedAP"))
        return IsBelow(reference, "SubNetwork/Communication/SCL") &&
               IsFirstOfItsTag(section->GetParent(QString()));
    const bool isInput = tag == QLatin1String("ExtRef") && section->GetTag() == "Inputs";
    const bool isClient =
        tag == QLatin1String("ClientLN") && IsBelow(reference, "RptEnabled/ReportControl");
    if ((!isInput && !isClient) || !IsFirstOfItsTag(section))
        return false;
    SCLElement* node = isInput ? section->GetParent(QString())
                               : section->GetParent(QString())->GetParent(QString());
    SCLElement* lDevice = node->GetParent(QString());
    const bool isInServer = IsBelow(node, "LDevice/Server/AccessPoint/IED/SCL") &&
                            IsFirstOfItsTag(lDevice->GetParent(QString()));
    if (!isInServer)
        return false;
    if (node->GetTag() == "LN0")
        return IsFirstOfItsTag(node);
    return node->GetTag() == "LN" && (withoutLN0 || lDevice->GetFirstChild("LN0"));
}

} // namespace Corvane::Test
