// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLDocument.h>

#include <corvane/crc/CrcCodeText.h>
#include <corvane/crc/CrcGenerator.h>
#include <corvane/crc/CrcStation.h>
#include <corvane/documents/ProgressTask.h>
#include <corvane/documents/WaitCursor.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/help/SclNames.h>

#include <QMap>
#include <QPointer>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::CrcStation;
using Internal::ProgressTask;
using Internal::WaitCursor;

namespace
{

QString CrcText(CrcStation& station, SCLElement* ied)
{
    unsigned int crc = 0;
    const CrcGenerator::CrcResult result = station.Generate(ied, crc);
    return Internal::IedCode(result, crc);
}

// Into the Private of that type, which goes behind all others if there is none.
void StoreCrc(SCLElement* owner, const QString& type, const QString& crcText)
{
    SCLElement* store = owner->FindChild(Tag::Private, Attribute::type, type, false);
    if (!store) {
        store = owner->CreateChild(Tag::Private, -1, true);
        if (!store)
            return;
        store->SetAttribute(Attribute::type, type, true);
    }
    store->SetValue(crcText, true);
}

bool HoldsIED(SCLElement* root, SCLElement* ied)
{
    return root && root->FindChildByType(Tag::IED, false).contains(ied);
}

} // namespace

void SCLDocument::UpdateCrcCode()
{
    if (!m_pRoot)
        return;
    const WaitCursor cursor;
    const QList<SCLElement*> ieds = m_pRoot->FindChildByType(Tag::IED, false);
    CrcStation station;
    ProgressTask task(this, tr("Updating CRC"), static_cast<int>(ieds.size()) + 1);
    task.Future()->setProgressValue(0);

    // Events run between two IEDs, and slots inside: they may take out what is still to come.
    const QPointer<SCLDocument> self(this);
    QMap<QString, QString> crcTexts;
    for (int i = 0; i < ieds.size() && self; ++i) {
        SCLElement* ied = ieds.at(i);
        if (station.IsUntouched() || HoldsIED(m_pRoot, ied)) {
            const QString crcText = CrcText(station, ied);
            crcTexts.insert(ied->GetAttribute(Attribute::name), crcText);
            station.Make([&] { StoreCrc(ied, QLatin1String(g_szIEDCrcPrivateType), crcText); });
        }
        task.Step(i + 1);
    }
    if (self && m_pRoot)
        StoreCrc(m_pRoot, QLatin1String(g_szSubstationCrcPrivateType),
                 Internal::SubstationCode(crcTexts));
    task.Finish();
}

} // namespace Corvane
