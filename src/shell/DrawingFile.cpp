#include "shell/DrawingFile.h"

#include "picture/SvgWriter.h"
#include "shell/PrimitivePainter.h"

#include <QApplication>
#include <QBuffer>
#include <QHashFunctions>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <optional>

namespace {

constexpr double kInch = 25.4; // mm

// Texts need an application, which needs no display here.
class FontsOfApplication {
public:
    FontsOfApplication() {
        if (qApp)
            return;
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QHashSeed::setDeterministicGlobalSeed(); // fonts come into a file in the order of a hash
        m_application.emplace(m_count, m_arguments);
    }

private:
    char m_name[13] = "detailstyles";
    char* m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    std::optional<QApplication> m_application;
};

std::string pngOf(const PicturePage& page) {
    QBuffer buffer;
    DrawingFile::imageOf(page).save(&buffer, "PNG");
    return buffer.data().toStdString();
}

// A picture tells nothing about the machine and the time that it was made at.
void withoutDate(std::string& pdf) {
    constexpr std::string_view kKey = "/CreationDate (D:";
    const std::size_t at = pdf.find(kKey);
    const std::size_t end = at == std::string::npos ? at : pdf.find(')', at);
    if (end == std::string::npos)
        return;
    std::string date = "20000101000000+00'00'";
    date.resize(end - at - kKey.size(), ' ');
    pdf.replace(at + kKey.size(), date.size(), date);
}

std::string pdfOf(const PicturePage& page) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    constexpr int kResolution = 1200;
    writer.setResolution(kResolution);
    writer.setTitle(QString::fromStdString(page.title));
    writer.setCreator(QStringLiteral("detailstyles"));
    writer.setPageLayout(
        QPageLayout(QPageSize(QSizeF(page.box.width(), page.box.height()), QPageSize::Millimeter),
                    QPageLayout::Portrait, {}));
    QHashSeed::setDeterministicGlobalSeed(); // by which the library orders the fonts in the file
    QPainter painter(&writer);
    DrawingFile::paint(painter, page, kResolution / kInch);
    painter.end();
    QHashSeed::resetRandomGlobalSeed();
    std::string pdf = buffer.data().toStdString();
    withoutDate(pdf);
    return pdf;
}

} // namespace

bool DrawingFile::isKnown(const std::filesystem::path& file) {
    return file.extension() == ".svg" || file.extension() == ".png" || file.extension() == ".pdf";
}

std::string DrawingFile::bytes(const std::filesystem::path& file, const PicturePage& page) {
    if (file.extension() == ".svg")
        return svgOf(page);
    const FontsOfApplication fonts;
    return file.extension() == ".png" ? pngOf(page) : pdfOf(page);
}

QImage DrawingFile::imageOf(const PicturePage& page) {
    constexpr double kMost = 8000; // pixels
    const double largest = std::max({page.box.width(), page.box.height(), 1.0});
    const double pixels = std::min(150 / kInch, kMost / largest);
    QImage image(static_cast<int>(std::ceil(page.box.width() * pixels)),
                 static_cast<int>(std::ceil(page.box.height() * pixels)), QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(std::lround(pixels * 1000)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(PrimitivePainter::paper({}));
    QPainter painter(&image);
    DrawingFile::paint(painter, page, pixels);
    painter.end();
    return image;
}

double DrawingFile::scaleFor(const PicturePage& page, const QPaintDevice& paper) {
    return std::min({paper.logicalDpiX() / kInch, paper.width() / std::max(page.box.width(), 1.0),
                     paper.height() / std::max(page.box.height(), 1.0)});
}

void DrawingFile::paint(QPainter& painter, const PicturePage& page, double pixels) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels, pixels);
    painter.translate(-page.box.low.u, page.box.high.v);
    std::vector<const Primitive*> all;
    for (const Primitive& primitive : page.primitives)
        all.push_back(&primitive);
    PrimitivePainter::paint(painter, all, {});
    std::vector<const Primitive*> highlighted;
    for (const std::size_t index : page.highlighted)
        highlighted.push_back(&page.primitives[index]);
    if (!highlighted.empty())
        PrimitivePainter::highlight(painter, highlighted, {});
}
