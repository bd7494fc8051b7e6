#include "PictureReader.h"
#include "QuickLook.h"
#include "Support/Pictures.h"
#include "Support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QImageWriter>
#include <QtEndian>
#include <cstdlib>
#include <map>
#include <string>

namespace tavrin {
namespace {

using test::setTimes;
using test::TestFolder;

std::string encoded(const QImage& image, const char* format, bool progressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(image));
    return buffer.data().toStdString();
}

QImage wide() {
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

std::string bigEndian(quint32 number) {
    std::string bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

quint32 crc(std::string_view bytes) {
    quint32 rest = 0xFFFFFFFF;
    for (const char byte : bytes) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest >> 1U) ^ (0xEDB88320U & (0U - (rest & 1U)));
    }
    return ~rest;
}

// A PNG that claims a size and holds nothing of it.
std::string claiming(quint32 width, quint32 height) {
    const std::string header = "IHDR" + bigEndian(width) + bigEndian(height) + std::string("\x08\x02\0\0\0", 5);
    return std::string("\x89PNG\r\n\x1a\n") + bigEndian(13) + header + bigEndian(crc(header));
}

PictureForm square(std::size_t side) {
    return {.side = side, .shape = PictureForm::Shape::square};
}

QImage fromScene(const test::ColourPicture& scene) {
    const auto width = static_cast<int>(scene.width);
    return QImage(scene.rgb.data(), width, static_cast<int>(scene.height), qsizetype{3} * width, QImage::Format_RGB888)
        .convertToFormat(QImage::Format_ARGB32);
}

/// On average over all samples.
void expectLike(const QImage& expected, const QImage& shown, double tolerance, const std::string& what) {
    ASSERT_EQ(shown.size(), expected.size()) << what;
    const QImage a = expected.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    const QImage b = shown.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    double sum = 0;
    for (qsizetype i = 0; i < a.sizeInBytes(); ++i)
        sum += std::abs(int{a.constBits()[i]} - int{b.constBits()[i]});
    EXPECT_LE(sum / static_cast<double>(a.sizeInBytes()), tolerance) << what;
}

TEST(PictureReader, aPictureIsScaledDownToFitOrToASquareAndNeverUp) {
    const TestFolder home;
    for (const char* format : {"png", "ppm"}) {
        const URL file = home.file(format, encoded(wide(), format));
        EXPECT_EQ(readPicture(file, {.side = 60}).size(), QSize(60, 20)) << format;
        EXPECT_EQ(readPicture(file, {.side = 900}).size(), QSize(300, 100)) << format;
    }
    EXPECT_EQ(readPicture(home / "png", square(60)).size(), QSize(60, 60));
    EXPECT_EQ(readPicture(home / "ppm", square(60)).size(), QSize(180, 60)) << "the toolkit cuts nothing off";
}

TEST(PictureReader, aNameThatIsNoTextIsReadToo) {
    const TestFolder home;
    EXPECT_FALSE(readPicture(home.file("\xFF#?%.png", encoded(wide(), "png")), {.side = 60}).isNull());
}

// Larger than any buffer on the way, and full of places that a reader must find again.
TEST(PictureReader, whatIsReadIsWhatTheFileHolds) {
    QImage noisy(600, 400, QImage::Format_RGB32);
    quint32 chance = 1;
    for (int y = 0; y < noisy.height(); ++y)
        for (int x = 0; x < noisy.width(); ++x)
            noisy.setPixel(x, y, (chance = chance * 1'664'525U + 1'013'904'223U) | 0xFF000000U);
    const TestFolder home;
    for (const char* format : {"png", "bmp", "jpg", "ppm"}) {
        const std::string bytes = encoded(noisy, format);
        const QImage expected = QImage::fromData(QByteArray::fromStdString(bytes));
        const QImage read = readPicture(home.file(format, bytes), {.side = 600});
        EXPECT_EQ(read.convertToFormat(expected.format()), expected) << format;
    }
}

TEST(PictureReader, everyFormOfPixelsLooksAsTheToolkitShowsIt) {
    QImage drawn = fromScene(test::drawnScene(31, 203, 151));
    for (int x = 0; x < 50; ++x)
        drawn.setPixel(x, 5, qRgba(10, 200, 30, x * 5));
    const TestFolder home;
    for (const QImage::Format pixels : {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_Grayscale8,
                                        QImage::Format_Grayscale16, QImage::Format_RGB16, QImage::Format_RGB32,
                                        QImage::Format_ARGB32, QImage::Format_RGBX64, QImage::Format_RGBA64}) {
        for (const char* format : {"png", "bmp", "jpg"}) {
            const std::string bytes = encoded(drawn.convertToFormat(pixels), format);
            const URL file = home.file(std::to_string(pixels) + format, bytes);
            expectLike(QImage::fromData(QByteArray::fromStdString(bytes)), readPicture(file, {.side = 203}), 1,
                       format + std::to_string(pixels));
        }
    }
}

TEST(PictureReader, everyFormatLooksAsTheToolkitShowsIt) {
    const test::ColourPicture scene = test::drawnScene(32, 320, 200);
    std::map<std::string, std::string> files = test::inEveryFormat(scene);
    files["inks"] = test::asJPEG(scene, {.isFourInks = true});
    files["grey"] = test::asJPEG(scene, {.isGrey = true});
    files["restarts"] = test::asJPEG(scene, {.restartRows = 2});
    files["runs"] = test::asBMP(scene, test::BMPForm::runs8);
    files["16 bits"] = test::asBMP(scene, test::BMPForm::masks16);
    files["core"] = test::asBMP(scene, test::BMPForm::core24);
    files["GIF in passes"] = test::asGIF(scene, {.isInterlaced = true});
    const TestFolder home;
    for (const auto& [name, bytes] : files) {
        const QImage read = QImage::fromData(QByteArray::fromStdString(bytes));
        // Not all formats are the toolkit's.
        const QImage expected = read.isNull() ? fromScene(scene) : read;
        const URL file = home.file(name, bytes);
        expectLike(expected, readPicture(file, {.side = 400}), 2.5, name);
        expectLike(expected.scaledToWidth(160, Qt::SmoothTransformation), readPicture(file, {.side = 160}), 2.5,
                   name + ", half as wide");
    }
}

TEST(PictureReader, aLookAtAPictureIsNoUseOfIt) {
    const TestFolder home;
    const URL file = home.file("old.png", encoded(wide(), "png"));
    // Older than the modification: any other program's read would be written down (relatime).
    setTimes(file, Date::fromUnix(1'000'000), Date::fromUnix(2'000'000));
    EXPECT_FALSE(readPicture(file, {.side = 60}).isNull());
    struct stat status {};
    ASSERT_EQ(::stat(file.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 1'000'000);
}

TEST(PictureReader, aProgressivePictureIsRead) {
    const TestFolder home;
    EXPECT_FALSE(readPicture(home.file("a.jpg", encoded(wide(), "jpg", true)), {.side = 60}).isNull());
}

TEST(PictureReader, whatIsBrokenOrNoPictureGivesNone) {
    const TestFolder home;
    EXPECT_TRUE(readPicture(home.file("a.png", "no picture"), {.side = 60}).isNull());
    EXPECT_TRUE(readPicture(home.file("b.png", ""), {.side = 60}).isNull());
    EXPECT_TRUE(readPicture(home.file("c.png", claiming(100, 100)), {.side = 60}).isNull());
    EXPECT_TRUE(readPicture(home.folder("d.png"), {.side = 60}).isNull());
    EXPECT_TRUE(readPicture(home / "gone.png", {.side = 60}).isNull());
}

TEST(PictureReader, aPipeIsNotWaitedFor) {
    const TestFolder home;
    ASSERT_EQ(::mkfifo((home / "pipe.png").path().c_str(), 0600), 0);
    EXPECT_TRUE(readPicture(home / "pipe.png", {.side = 60}).isNull());
}

// Decoding would allocate gigabytes; the header is enough to refuse.
TEST(PictureReader, aPictureThatClaimsTooMuchIsRefusedByItsHeader) {
    const TestFolder home;
    EXPECT_TRUE(readPicture(home.file("bomb.png", claiming(60'000, 60'000)), {.side = 60}).isNull());
    const std::string pixels(1'000'000, 'x');
    EXPECT_TRUE(readPicture(home.file("bomb.ppm", "P6 60000 60000 255\n" + pixels), {.side = 60}).isNull());
}

TEST(PictureReader, whatTheCoreKnowsAndRefusesIsNotTriedAgain) {
    const TestFolder home;
    const std::string whole = encoded(fromScene(test::drawnScene(33, 200, 150)), "jpg");
    const QByteArray half = QByteArray::fromStdString(whole.substr(0, whole.size() / 2));
    ASSERT_FALSE(QImage::fromData(half).isNull()) << "the toolkit fills up what is missing";
    EXPECT_TRUE(readPicture(home.file("half.jpg", half.toStdString()), {.side = 60}).isNull());
}

TEST(PictureReader, thereIsNoneOnceItIsCancelled) {
    const TestFolder home;
    const URL file = home.file("a.png", encoded(wide(), "png"));
    EXPECT_TRUE(readPicture(file, {.side = 60}, [] { return true; }).isNull());
}

TEST(PictureReader, aSquareHasRoundCornersAndIsFilledToItsEdges) {
    const QImage square = roundedSquare(wide(), 40, 0.25);
    EXPECT_EQ(square.size(), QSize(40, 40));
    EXPECT_EQ(qAlpha(square.pixel(0, 0)), 0);
    EXPECT_EQ(square.pixelColor(20, 0), QColor(Qt::darkCyan));
    EXPECT_EQ(square.pixelColor(0, 20), QColor(Qt::darkCyan));
}

TEST(PictureReader, theEdgesOfASquareAreNotMixedWithThoseOnTheOtherSide) {
    QImage halves(4, 4, QImage::Format_RGB32);
    halves.fill(Qt::red);
    halves.setPixelColor(3, 2, Qt::blue);
    EXPECT_EQ(roundedSquare(halves, 40, 0.1).pixelColor(0, 25), QColor(Qt::red));
}

TEST(PreviewFacts, theBeginningOfATextIsEnough) {
    const TestFolder home;
    const PreviewFacts facts = previewFacts(home.file("a.txt", std::string(200'000, 'x')));
    EXPECT_TRUE(facts.isText);
    EXPECT_EQ(facts.text.size(), 64 * 1024);
    EXPECT_EQ(facts.bytes, 200'000);
    EXPECT_FALSE(facts.created.isEmpty());
    EXPECT_FALSE(facts.modified.isEmpty());
}

TEST(PreviewFacts, aFolderAndAPipeAreNamedAndNotRead) {
    const TestFolder home;
    EXPECT_TRUE(previewFacts(home.folder("a")).isDirectory);
    ASSERT_EQ(::mkfifo((home / "pipe.txt").path().c_str(), 0600), 0);
    const PreviewFacts pipe = previewFacts(home / "pipe.txt");
    EXPECT_EQ(pipe.name, QStringLiteral("pipe.txt"));
    EXPECT_FALSE(pipe.isText);
}

TEST(PreviewFacts, whatIsGoneHasItsNameAndNothingElse) {
    const PreviewFacts facts = previewFacts(URL::fromPath("/nowhere/\xFFname"));
    EXPECT_EQ(facts.name, QStringLiteral("\uFFFDname"));
    EXPECT_FALSE(facts.bytes.has_value());
    EXPECT_TRUE(facts.modified.isEmpty());
}

}  // namespace
}  // namespace tavrin
