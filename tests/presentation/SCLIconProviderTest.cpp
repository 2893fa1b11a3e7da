// SPDX-License-Identifier: Apache-2.0
#include <corvane/presentation/SCLIconProvider.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QTest>

#include <memory>

using namespace Corvane;

using Icon = SCLIconProvider::SclIconType;

namespace
{

// As pixmaps keep images: there is no way back from premultiplied colours.
QImage ImageOf(const QIcon& icon)
{
    return icon.pixmap(64, 64).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage Embedded(const QString& name)
{
    const QImage image(":/corvane/images/" + name);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QIcon IconOfOneColour(Qt::GlobalColor colour)
{
    QPixmap pixmap(64, 64);
    pixmap.fill(colour);
    return QIcon(pixmap);
}

QImage Ground()
{
    QImage ground(64, 64, QImage::Format_ARGB32);
    ground.fill(Qt::white);
    return ground;
}

QImage PaintedOnGround(const QIcon& icon)
{
    QImage image = Ground();
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image;
}

} // namespace

class SCLIconProviderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void beforeAnyConstructionThereIsNoInstance();
    void theInstanceIsTheOneMadeLast();
    void destroyingAnEarlierProviderLeavesTheInstance();
    void aParentOwnsTheProvider();
    void theEnumerationIsConsecutive();
    void aTypeShowsItsImage_data();
    void aTypeShowsItsImage();
    void aTagShowsItsImage_data();
    void aTagShowsItsImage();
    void LN0ShowsTheImageOfLN();
    void theTypeLn0PaintsNothingUntilOneIsRegistered();
    void aTagOutsideTheTableHasANullIcon_data();
    void aTagOutsideTheTableHasANullIcon();
    void aTypeOutsideTheEnumerationHasANullIcon();
    void aRegisteredIconReplacesThatOfItsTypeOnly();
    void aRegisteredIconDoesNotReachTheTag();
    void aRegisteredIconIsKnownToThisProviderOnly();
    void aNullIconCanBeRegistered();
    void aValueOutsideTheEnumerationCanBeRegistered();

private:
    SCLIconProvider* m_pInstanceAtStart = nullptr;
};

void SCLIconProviderTest::initTestCase()
{
    m_pInstanceAtStart = SCLIconProvider::Instantce();
}

void SCLIconProviderTest::beforeAnyConstructionThereIsNoInstance()
{
    QVERIFY(!m_pInstanceAtStart);
}

void SCLIconProviderTest::theInstanceIsTheOneMadeLast()
{
    const SCLIconProvider first;
    QCOMPARE(SCLIconProvider::Instantce(), &first);
    const SCLIconProvider second;
    QCOMPARE(SCLIconProvider::Instantce(), &second);
}

void SCLIconProviderTest::destroyingAnEarlierProviderLeavesTheInstance()
{
    auto first = std::make_unique<SCLIconProvider>();
    const SCLIconProvider second;
    first.reset();
    QCOMPARE(SCLIconProvider::Instantce(), &second);
}

void SCLIconProviderTest::aParentOwnsTheProvider()
{
    bool destroyed = false;
    {
        QObject parent;
        auto* provider = new SCLIconProvider(&parent);
        QCOMPARE(provider->parent(), &parent);
        connect(provider, &QObject::destroyed, this, [&destroyed] { destroyed = true; });
    }
    QVERIFY(destroyed);
}

void SCLIconProviderTest::theEnumerationIsConsecutive()
{
    QCOMPARE(int(Icon::SclIconScl), 0);
    QCOMPARE(int(Icon::SclIconLn0), 9);
    QCOMPARE(int(Icon::SclIconFc), 16);
    QCOMPARE(int(Icon::SclIconSub), 26);
    QCOMPARE(int(Icon::SclIconBreaker), 33);
    QCOMPARE(int(Icon::SclIconTerminal), 43);
}

void SCLIconProviderTest::aTypeShowsItsImage_data()
{
    QTest::addColumn<int>("type");
    const char* const names[] = {
        "scl",       "folder",      "network",     "gse",      "smv",     "ied",     "ap",
        "ld",        "ln",          nullptr,       "doi",      "sdi",     "dai",     "val",
        "dataset",   "fcda",        "fc",          "do",       "sdo",     "da",      "bda",
        "lntype",    "dotype",      "datype",      "enumtype", "enumval", "sub",     "vlevel",
        "bay",       "doubletrans", "trebletrans", "winding",  "bus",     "breaker", "switch",
        "capacitor", "earth",       "generator",   "infeed",   "reactor", "ta",      "tv",
        "cnode",     "terminal"};
    int type = 0;
    for (const char* name : names) {
        if (name)
            QTest::newRow(name) << type;
        ++type;
    }
}

void SCLIconProviderTest::aTypeShowsItsImage()
{
    QFETCH(int, type);
    const SCLIconProvider provider;
    const QImage image = ImageOf(provider.GetSclIcon(Icon(type)));
    QCOMPARE(image.size(), QSize(64, 64));
    QCOMPARE(image, Embedded(QString("scl_%1.png").arg(QTest::currentDataTag())));
}

void SCLIconProviderTest::aTagShowsItsImage_data()
{
    QTest::addColumn<QString>("image");
    QTest::newRow("SCL") << "scl_scl.png";
    QTest::newRow("GSE") << "scl_gse.png";
    QTest::newRow("SMV") << "scl_smv.png";
    QTest::newRow("IED") << "scl_ied.png";
    QTest::newRow("AccessPoint") << "scl_ap.png";
    QTest::newRow("LDevice") << "scl_ld.png";
    QTest::newRow("LN") << "scl_ln.png";
    QTest::newRow("LN0") << "scl_ln.png";
    QTest::newRow("DOI") << "scl_doi.png";
    QTest::newRow("SDI") << "scl_sdi.png";
    QTest::newRow("DAI") << "scl_dai.png";
    QTest::newRow("Val") << "scl_val.png";
    QTest::newRow("DataSet") << "scl_dataset.png";
    QTest::newRow("FCDA") << "scl_fcda.png";
    QTest::newRow("DO") << "scl_do.png";
    QTest::newRow("SDO") << "scl_sdo.png";
    QTest::newRow("DA") << "scl_da.png";
    QTest::newRow("BDA") << "scl_bda.png";
    QTest::newRow("LNodeType") << "scl_lntype.png";
    QTest::newRow("DOType") << "scl_dotype.png";
    QTest::newRow("DAType") << "scl_datype.png";
    QTest::newRow("EnumType") << "scl_enumtype.png";
    QTest::newRow("EnumVal") << "scl_enumval.png";
    QTest::newRow("Substation") << "scl_sub.png";
}

void SCLIconProviderTest::aTagShowsItsImage()
{
    QFETCH(QString, image);
    const SCLIconProvider provider;
    const QImage shown = ImageOf(provider.GetSclIcon(QString(QTest::currentDataTag())));
    QCOMPARE(shown.size(), QSize(64, 64));
    QCOMPARE(shown, Embedded(image));
}

void SCLIconProviderTest::LN0ShowsTheImageOfLN()
{
    const SCLIconProvider provider;
    const QImage image = ImageOf(provider.GetSclIcon("LN0"));
    QVERIFY(!image.isNull());
    QCOMPARE(image, ImageOf(provider.GetSclIcon("LN")));
}

void SCLIconProviderTest::theTypeLn0PaintsNothingUntilOneIsRegistered()
{
    SCLIconProvider provider;
    QVERIFY(ImageOf(provider.GetSclIcon(Icon::SclIconLn0)).isNull());
    QCOMPARE(PaintedOnGround(provider.GetSclIcon(Icon::SclIconLn0)), Ground());
    provider.RegisterSclIcon(Icon::SclIconLn0, IconOfOneColour(Qt::red));
    QVERIFY(PaintedOnGround(provider.GetSclIcon(Icon::SclIconLn0)) != Ground());
}

void SCLIconProviderTest::aTagOutsideTheTableHasANullIcon_data()
{
    QTest::addColumn<QString>("tag");
    QTest::newRow("an element without an icon") << "Bay";
    QTest::newRow("another one") << "VoltageLevel";
    QTest::newRow("no element") << "Folder";
    QTest::newRow("other case") << "ied";
    QTest::newRow("only the begin of a tag") << "Data";
    QTest::newRow("a tag with a blank") << "IED ";
    QTest::newRow("a tag with a prefix") << "scl:IED";
    QTest::newRow("empty") << "";
    QTest::newRow("null") << QString();
}

void SCLIconProviderTest::aTagOutsideTheTableHasANullIcon()
{
    QFETCH(QString, tag);
    const SCLIconProvider provider;
    QVERIFY(provider.GetSclIcon(tag).isNull());
}

void SCLIconProviderTest::aTypeOutsideTheEnumerationHasANullIcon()
{
    const SCLIconProvider provider;
    QVERIFY(provider.GetSclIcon(Icon(-1)).isNull());
    QVERIFY(provider.GetSclIcon(Icon(44)).isNull());
}

void SCLIconProviderTest::aRegisteredIconReplacesThatOfItsTypeOnly()
{
    SCLIconProvider provider;
    const QIcon icon = IconOfOneColour(Qt::red);
    provider.RegisterSclIcon(Icon::SclIconIed, icon);
    QCOMPARE(provider.GetSclIcon(Icon::SclIconIed).cacheKey(), icon.cacheKey());
    QCOMPARE(ImageOf(provider.GetSclIcon(Icon::SclIconSmv)), Embedded("scl_smv.png"));
    QCOMPARE(ImageOf(provider.GetSclIcon(Icon::SclIconAp)), Embedded("scl_ap.png"));
}

void SCLIconProviderTest::aRegisteredIconDoesNotReachTheTag()
{
    SCLIconProvider provider;
    provider.RegisterSclIcon(Icon::SclIconIed, IconOfOneColour(Qt::red));
    QCOMPARE(ImageOf(provider.GetSclIcon("IED")), Embedded("scl_ied.png"));
}

void SCLIconProviderTest::aRegisteredIconIsKnownToThisProviderOnly()
{
    SCLIconProvider provider;
    provider.RegisterSclIcon(Icon::SclIconIed, IconOfOneColour(Qt::red));
    const SCLIconProvider other;
    QCOMPARE(ImageOf(other.GetSclIcon(Icon::SclIconIed)), Embedded("scl_ied.png"));
}

void SCLIconProviderTest::aNullIconCanBeRegistered()
{
    SCLIconProvider provider;
    provider.RegisterSclIcon(Icon::SclIconFolder, QIcon());
    QVERIFY(provider.GetSclIcon(Icon::SclIconFolder).isNull());
}

void SCLIconProviderTest::aValueOutsideTheEnumerationCanBeRegistered()
{
    SCLIconProvider provider;
    const QIcon icon = IconOfOneColour(Qt::red);
    for (const int value : {-1, 44, 1000000}) {
        provider.RegisterSclIcon(Icon(value), icon);
        QCOMPARE(provider.GetSclIcon(Icon(value)).cacheKey(), icon.cacheKey());
    }
}

QTEST_MAIN(SCLIconProviderTest)
#include "SCLIconProviderTest.moc"
