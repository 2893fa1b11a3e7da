// SPDX-License-Identifier: Apache-2.0
// The images that the library carries, as files and as what is seen of them.
#include <corvane/presentation/SCLIconProvider.h>

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <cmath>

using namespace Corvane;

namespace
{

const QColor lightGround(255, 255, 255);
const QColor darkGround(30, 30, 30);

QStringList ImageNames()
{
    return QDir(":/corvane/images").entryList(QDir::Files, QDir::Name);
}

QStringList NamesWithoutSuffix(const QString& folder, const QString& pattern)
{
    QStringList names = QDir(folder).entryList({pattern}, QDir::Files, QDir::Name);
    return names.replaceInStrings(QRegularExpression("\\.[a-z]+$"), QString());
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// As a row of a tree view shows it.
QImage Small(const QString& name, const QColor& ground)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    QIcon(":/corvane/images/" + name).paint(&painter, image.rect());
    return image;
}

double Linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

// The ratio of WCAG: 1 is none, 21 is black on white.
double Contrast(const QColor& one, const QColor& other)
{
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}

int Distance(QRgb one, QRgb other)
{
    return qMax(qAbs(qRed(one) - qRed(other)),
                qMax(qAbs(qGreen(one) - qGreen(other)), qAbs(qBlue(one) - qBlue(other))));
}

template <typename Condition>
int CountPixels(const QImage& image, Condition condition)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += condition(x, y) ? 1 : 0;
    return count;
}

int ClearlySeenPixels(const QImage& image, const QColor& ground)
{
    return CountPixels(image, [&image, &ground](int x, int y) {
        return Contrast(image.pixelColor(x, y), ground) >= 2.5;
    });
}

int ClearlyDifferentPixels(const QImage& one, const QImage& other)
{
    return CountPixels(one, [&one, &other](int x, int y) {
        return Distance(one.pixel(x, y), other.pixel(x, y)) >= 64;
    });
}

} // namespace

class EmbeddedImagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAre43AndNoneForLn0();
    void theObjectsCarryTheImagesToo();
    void anImageIsSquareAndPartlyTransparent_data();
    void anImageIsSquareAndPartlyTransparent();
    void allImagesDiffer();
    void eachImageComesFromADrawing();
    void drawingsHoldNoTextAndNoOtherFiles();
    void anEmbeddedImageIsTheFileInTheTree();
    void anIconIsSeenAt16PixelsOnLightAndOnDarkGround_data();
    void anIconIsSeenAt16PixelsOnLightAndOnDarkGround();
    void anIconIsToldFromAllOthersAt16Pixels_data();
    void anIconIsToldFromAllOthersAt16Pixels();

private:
    static void AddImageRows();
};

void EmbeddedImagesTest::AddImageRows()
{
    QTest::addColumn<QString>("name");
    const QStringList names = ImageNames();
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void EmbeddedImagesTest::thereAre43AndNoneForLn0()
{
    QCOMPARE(ImageNames().size(), 43);
    QVERIFY(!ImageNames().contains("scl_ln0.png"));
}

void EmbeddedImagesTest::theObjectsCarryTheImagesToo()
{
    const SCLIconProvider provider;
    QVERIFY(!provider.GetSclIcon("SCL").pixmap(64, 64).isNull());
}

void EmbeddedImagesTest::anImageIsSquareAndPartlyTransparent_data()
{
    AddImageRows();
}

void EmbeddedImagesTest::anImageIsSquareAndPartlyTransparent()
{
    QFETCH(QString, name);
    const QImage image(":/corvane/images/" + name);
    QCOMPARE(image.size(), QSize(64, 64));
    QVERIFY(image.hasAlphaChannel());
    QCOMPARE(qAlpha(image.pixel(63, 63)), 0);
    const int opaque =
        CountPixels(image, [&image](int x, int y) { return qAlpha(image.pixel(x, y)) == 255; });
    QVERIFY(opaque > 200);
}

void EmbeddedImagesTest::allImagesDiffer()
{
    QSet<QByteArray> seen;
    const QStringList names = ImageNames();
    for (const QString& name : names) {
        const QImage image =
            QImage(":/corvane/images/" + name).convertToFormat(QImage::Format_ARGB32);
        seen.insert(
            QByteArray(reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes())));
    }
    QCOMPARE(seen.size(), names.size());
}

void EmbeddedImagesTest::eachImageComesFromADrawing()
{
    const QStringList images = NamesWithoutSuffix(CORVANE_IMAGES_DIR, "*.png");
    QCOMPARE(images, NamesWithoutSuffix(CORVANE_IMAGES_DIR "/svg", "*.svg"));
    QCOMPARE(images, NamesWithoutSuffix(":/corvane/images", "*"));
}

void EmbeddedImagesTest::drawingsHoldNoTextAndNoOtherFiles()
{
    const QDir folder(CORVANE_IMAGES_DIR "/svg");
    const QStringList names = folder.entryList({"*.svg"});
    QVERIFY(!names.isEmpty());
    for (const QString& name : names) {
        const QByteArray drawing = BytesOf(folder.filePath(name));
        QVERIFY2(drawing.contains("viewBox=\"0 0 64 64\""), qPrintable(name));
        for (const char* word : {"<text", "font", "<image", "href"})
            QVERIFY2(!drawing.contains(word), qPrintable(name + ": " + word));
    }
}

void EmbeddedImagesTest::anEmbeddedImageIsTheFileInTheTree()
{
    const QStringList names = ImageNames();
    QVERIFY(!names.isEmpty());
    for (const QString& name : names)
        QVERIFY2(BytesOf(":/corvane/images/" + name) ==
                     BytesOf(QString(CORVANE_IMAGES_DIR "/") + name),
                 qPrintable(name));
}

void EmbeddedImagesTest::anIconIsSeenAt16PixelsOnLightAndOnDarkGround_data()
{
    AddImageRows();
}

void EmbeddedImagesTest::anIconIsSeenAt16PixelsOnLightAndOnDarkGround()
{
    QFETCH(QString, name);
    for (const QColor& ground : {lightGround, darkGround}) {
        const int seen = ClearlySeenPixels(Small(name, ground), ground);
        QVERIFY2(seen >= 20, qPrintable(QString("%1 pixels on %2").arg(seen).arg(ground.name())));
    }
}

void EmbeddedImagesTest::anIconIsToldFromAllOthersAt16Pixels_data()
{
    AddImageRows();
}

void EmbeddedImagesTest::anIconIsToldFromAllOthersAt16Pixels()
{
    QFETCH(QString, name);
    const QStringList names = ImageNames();
    for (const QColor& ground : {lightGround, darkGround}) {
        const QImage image = Small(name, ground);
        for (const QString& other : names) {
            if (other == name)
                continue;
            const int different = ClearlyDifferentPixels(image, Small(other, ground));
            QVERIFY2(
                different >= 8,
                qPrintable(
                    QString("%1 pixels on %2 from %3").arg(different).arg(ground.name(), other)));
        }
    }
}

QTEST_MAIN(EmbeddedImagesTest)
#include "EmbeddedImagesTest.moc"
