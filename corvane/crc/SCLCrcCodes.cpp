// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/SCLCrcCodes.h>

#include <corvane/crc/CrcCodeText.h>
#include <corvane/crc/CrcStation.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>

#include <QMap>

#include <algorithm>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::CrcStation;

namespace
{

QString StoredCode(SCLElement* owner, const char* type)
{
    const SCLElement* store =
        owner->FindChild(Tag::Private, Attribute::type, QLatin1String(type), false);
    if (!store)
        return {};
    const QString code = store->GetValue();
    return code.isNull() ? QStringLiteral("") : code;
}

SCLCrcCodes::IedCode CodeOf(CrcStation& station, SCLElement* ied)
{
    SCLCrcCodes::IedCode code;
    code.ied = ied;
    unsigned int crc = 0;
    code.result = station.Generate(ied, crc);
    code.computed = Internal::IedCode(code.result, crc);
    code.stored = StoredCode(ied, g_szIEDCrcPrivateType);
    return code;
}

} // namespace

bool SCLCrcCodes::Hold() const
{
    return substation.Holds() && std::all_of(ieds.cbegin(), ieds.cend(),
                                             [](const IedCode& code) { return code.Holds(); });
}

SCLCrcCodes SCLCrcCodes::Of(SCLElement* root)
{
    SCLCrcCodes codes;
    if (!root)
        return codes;
    CrcStation station;
    QMap<QString, QString> codeOfName;
    const QList<SCLElement*> ieds = root->FindChildByType(Tag::IED, false);
    for (SCLElement* ied : ieds) {
        codes.ieds.append(CodeOf(station, ied));
        codeOfName.insert(ied->GetAttribute(Attribute::name), codes.ieds.constLast().computed);
    }
    codes.substation.computed = Internal::SubstationCode(codeOfName);
    codes.substation.stored = StoredCode(root, g_szSubstationCrcPrivateType);
    return codes;
}

SCLCrcCodes::IedCode SCLCrcCodes::OfIed(SCLElement* ied)
{
    if (!ied)
        return {};
    CrcStation station;
    return CodeOf(station, ied);
}

} // namespace Corvane
