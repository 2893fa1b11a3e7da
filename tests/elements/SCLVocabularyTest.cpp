// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TempFile.h"

#include <corvane/elements/SCLVocabulary.h>

#include <QObject>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace
{

using namespace Corvane;

struct Word {
    const char* name;
    const char* constant;
    const char* text;
};

// In the order in which the header declares them.
const Word g_words[] = {
    {"g_szDefaultToolId", g_szDefaultToolId, "TALVEN-CFG"},
    {"g_szNameStructureIEDName", g_szNameStructureIEDName, "IEDName"},
    {"g_szStatusDANames", g_szStatusDANames,
     "stVal,setVal,t,general,phsA,phsB,phsC,neut,dirGeneral,dirPhsA,dirPhsB,dirPhsC,dirNeut"},
    {"g_szMeasureDANames", g_szMeasureDANames, "instMag.i,mag.f"},
    {"g_szIEDCrcPrivateType", g_szIEDCrcPrivateType, "IED virtual terminal conection CRC"},
    {"g_szSubstationCrcPrivateType", g_szSubstationCrcPrivateType,
     "Substation virtual terminal conection CRC"},
    {"g_szTagSCL", g_szTagSCL, "SCL"},
    {"g_szTagPrivate", g_szTagPrivate, "Private"},
    {"g_szTagHeader", g_szTagHeader, "Header"},
    {"g_szTagHistory", g_szTagHistory, "History"},
    {"g_szTagSubstation", g_szTagSubstation, "Substation"},
    {"g_szTagCommunication", g_szTagCommunication, "Communication"},
    {"g_szTagSubNetwork", g_szTagSubNetwork, "SubNetwork"},
    {"g_szTagConnectedAP", g_szTagConnectedAP, "ConnectedAP"},
    {"g_szTagAddress", g_szTagAddress, "Address"},
    {"g_szTagGSE", g_szTagGSE, "GSE"},
    {"g_szTagSMV", g_szTagSMV, "SMV"},
    {"g_szTagPhysConn", g_szTagPhysConn, "PhysConn"},
    {"g_szTagP", g_szTagP, "P"},
    {"g_szTagIED", g_szTagIED, "IED"},
    {"g_szTagServices", g_szTagServices, "Services"},
    {"g_szTagAccessPoint", g_szTagAccessPoint, "AccessPoint"},
    {"g_szTagServer", g_szTagServer, "Server"},
    {"g_szTagLDevice", g_szTagLDevice, "LDevice"},
    {"g_szTagLN0", g_szTagLN0, "LN0"},
    {"g_szTagLN", g_szTagLN, "LN"},
    {"g_szTagDataSet", g_szTagDataSet, "DataSet"},
    {"g_szTagFCDA", g_szTagFCDA, "FCDA"},
    {"g_szTagReportControl", g_szTagReportControl, "ReportControl"},
    {"g_szTagLogControl", g_szTagLogControl, "LogControl"},
    {"g_szTagGSEControl", g_szTagGSEControl, "GSEControl"},
    {"g_szTagSettingControl", g_szTagSettingControl, "SettingControl"},
    {"g_szTagSampledValueControl", g_szTagSampledValueControl, "SampledValueControl"},
    {"g_szTagInputs", g_szTagInputs, "Inputs"},
    {"g_szTagExtRef", g_szTagExtRef, "ExtRef"},
    {"g_szTagDOI", g_szTagDOI, "DOI"},
    {"g_szTagSDI", g_szTagSDI, "SDI"},
    {"g_szTagDAI", g_szTagDAI, "DAI"},
    {"g_szTagVal", g_szTagVal, "Val"},
    {"g_szTagDataTypeTemplates", g_szTagDataTypeTemplates, "DataTypeTemplates"},
    {"g_szTagLNodeType", g_szTagLNodeType, "LNodeType"},
    {"g_szTagDOType", g_szTagDOType, "DOType"},
    {"g_szTagDAType", g_szTagDAType, "DAType"},
    {"g_szTagEnumType", g_szTagEnumType, "EnumType"},
    {"g_szTagDO", g_szTagDO, "DO"},
    {"g_szTagSDO", g_szTagSDO, "SDO"},
    {"g_szTagDA", g_szTagDA, "DA"},
    {"g_szTagBDA", g_szTagBDA, "BDA"},
    {"g_szTagEnumVal", g_szTagEnumVal, "EnumVal"},
};

constexpr const char* g_header = CORVANE_TEST_DIR "/../corvane/elements/SCLVocabulary.h";

} // namespace

class SCLVocabularyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachConstantHoldsItsWord_data();
    void eachConstantHoldsItsWord();
    void theHeaderDeclaresTheseConstantsInThisOrder();
    void tagsAreNamedAfterTheirConstants();
    void noTwoTagsAreEqual();
};

void SCLVocabularyTest::eachConstantHoldsItsWord_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("text");
    for (const Word& word : g_words)
        QTest::newRow(word.name) << QString::fromLatin1(word.constant)
                                 << QString::fromLatin1(word.text);
}

void SCLVocabularyTest::eachConstantHoldsItsWord()
{
    QFETCH(QString, constant);
    QFETCH(QString, text);
    QCOMPARE(constant, text);
}

void SCLVocabularyTest::theHeaderDeclaresTheseConstantsInThisOrder()
{
    QStringList expected;
    for (const Word& word : g_words)
        expected.append(word.name);
    QCOMPARE(expected.size(), 49);

    QStringList declared;
    const QRegularExpression declaration("static const char\\* const (\\w+)\\s*=");
    const QString header = QString::fromUtf8(Test::ReadFile(g_header));
    auto match = declaration.globalMatch(header);
    while (match.hasNext())
        declared.append(match.next().captured(1));
    QCOMPARE(declared, expected);
}

void SCLVocabularyTest::tagsAreNamedAfterTheirConstants()
{
    int tags = 0;
    for (const Word& word : g_words) {
        const QString name = QString::fromLatin1(word.name);
        if (!name.startsWith("g_szTag"))
            continue;
        ++tags;
        QCOMPARE(QString::fromLatin1(word.constant), name.mid(7));
    }
    QCOMPARE(tags, 43);
}

void SCLVocabularyTest::noTwoTagsAreEqual()
{
    QSet<QString> texts;
    for (const Word& word : g_words)
        texts.insert(QString::fromLatin1(word.constant));
    QCOMPARE(texts.size(), 49);
}

QTEST_APPLESS_MAIN(SCLVocabularyTest)
#include "SCLVocabularyTest.moc"
