#include "ImagePixels.h"

#include "linux/face/QtCanvas.h"
#include "support/ChartPictures.h"

#include <QDir>
#include <QFont>
#include <QPainter>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

/// Of all pixels; what another version of the toolkit may do differently.
constexpr double tolerance = 0.005;

/// One that looks the same on every machine.
QFont knownFont() {
    QFont font(QStringLiteral("Noto Sans"));
    font.setPixelSize(12);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

QImage drawn(const ChartCase& one) {
    const ChartOfCase form(one);
    QImage image(ChartCase::width, ChartCase::height, QImage::Format_RGB32);
    QPainter painter(&image);
    face::QtCanvas canvas(painter, image.size(), knownFont());
    ChartPicture(form.chart).draw(canvas, one.palette());
    return image;
}

QImage kept(const ChartCase& one) {
    return QImage(QStringLiteral(TARVIK_PICTURES "/%1.png").arg(QString::fromStdString(one.name)));
}

/// Writes an image as the picture of that case; the name of its file.
std::string write(const QImage& image, const QString& folder, const ChartCase& one) {
    QDir().mkpath(folder);
    const QString file = QDir(folder).filePath(QString::fromStdString(one.name + ".png"));
    return image.save(file) ? file.toStdString() : "nowhere: " + file.toStdString();
}

class ChartPictureTest : public testing::TestWithParam<ChartCase> {};

TEST_P(ChartPictureTest, LooksAsItShould) {
    const QImage now = drawn(GetParam());
    if (const QString folder = qEnvironmentVariable("TARVIK_WRITE_PICTURES"); !folder.isEmpty()) {
        GTEST_SKIP() << "Written to " << write(now, folder, GetParam());
    }

    const double differing = differingPart(pixelsOf(now), pixelsOf(kept(GetParam())));

    EXPECT_LE(differing, tolerance)
        << "What was drawn is in "
        << write(now, QDir::temp().filePath(QStringLiteral("tarvik-pictures")), GetParam())
        << ". If it is right, TARVIK_WRITE_PICTURES=FOLDER writes all pictures anew.";
}

INSTANTIATE_TEST_SUITE_P(All, ChartPictureTest, testing::ValuesIn(chartCases()),
                         [](const auto& one) { return nameOf(one.param); });

TEST(ChartPicturesTest, APictureThatLacksALineIsNoticed) {
    const QImage one = drawn({.name = "line_one"});
    const QImage two = drawn({.name = "line_two", .columns = 2});

    EXPECT_GT(differingPart(pixelsOf(one), pixelsOf(two)), tolerance);
}

} // namespace
} // namespace tarvik
