#include "platform/linux/RecorderPicture.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace velmorand {
namespace {

// All lengths are in points.
constexpr double panelWidth = 480;
constexpr double leastHeight = 232;
constexpr double padding = 24;
constexpr double gap = 16;
constexpr double textWidth = panelWidth - 2 * padding;

constexpr double wellHeight = 88;
constexpr double wellRadius = 12;
constexpr double wellOutline = 2;

constexpr double capSize = 40;
constexpr double capRadius = 8;
constexpr double capPadding = 18;
constexpr double capGap = 6;
constexpr double capFoot = 2;  // by which its lower edge is thicker
constexpr double caretWidth = 2;
constexpr double caretHeight = 18;
constexpr double mostCapsWidth = textWidth - 2 * capGap;

constexpr double promptSize = 15;
constexpr double promptLine = 20;
constexpr double messageSize = 13;
constexpr double messageLine = 20;
constexpr double capTextSize = 18;
constexpr double mostScale = 8;

constexpr int mostPromptLines = 3;
constexpr int mostMessageLines = 12;
/// More of a text than this cannot be seen anyway.
constexpr qsizetype mostCharacters = 2000;

const QColor ink(0x25, 0x31, 0x3B);
const QColor slate(0x6C, 0x6C, 0x67);
const QColor paper(0xFB, 0xF6, 0xEF);
const QColor cream(0xFA, 0xF2, 0xE7);
const QColor card(0xFF, 0xFD, 0xFA);
const QColor outline(0xD9, 0xCB, 0xB5);
const QColor bronze(0x7A, 0x4F, 0x18);

QFont fontOf(double size, QFont::Weight weight) {
    QFont font;
    // The size in pixels is a whole number; the painter's scale does the rest.
    font.setPixelSize(static_cast<int>(size));
    font.setWeight(weight);
    return font;
}

/// Line ends of any kind and other control characters become spaces: a text flows as the panel is wide.
QString shown(const std::string& text) {
    QString result = QString::fromStdString(text).left(mostCharacters);
    std::ranges::replace_if(result, [](QChar each) { return each.category() == QChar::Other_Control; }, u' ');
    return result;
}

/// A text that is broken into lines as wide as the panel's inside.
class Paragraph {
public:
    Paragraph(const QString& text, const QFont& font, double lineHeight, int mostLines)
        : font_(font), lineHeight_(lineHeight) {
        QTextLayout layout(text, font);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(textWidth);
            const bool isLast = std::ssize(lines_) + 1 == mostLines;
            const QString rest = text.mid(line.textStart(), isLast ? -1 : line.textLength());
            lines_.push_back(QFontMetricsF(font).elidedText(rest.trimmed(), Qt::ElideRight, textWidth + 1));
            if (isLast) break;
        }
        layout.endLayout();
    }

    [[nodiscard]] int lineCount() const { return static_cast<int>(lines_.size()); }
    [[nodiscard]] double height() const { return static_cast<double>(lines_.size()) * lineHeight_; }

    void draw(QPainter& painter, double top, const QColor& color) const {
        painter.setFont(font_);
        painter.setPen(color);
        for (const QString& line : lines_) {
            painter.drawText(QRectF(padding - 1, top, textWidth + 2, lineHeight_), Qt::AlignCenter | Qt::TextSingleLine,
                             line);
            top += lineHeight_;
        }
    }

private:
    QFont font_;
    double lineHeight_;
    std::vector<QString> lines_;
};

struct KeyCap {
    QString text;
    double width;
};

/// As many as fit, from the first on.
std::vector<KeyCap> capsOf(const RecorderPanelContent& content, const QFont& font) {
    std::vector<KeyCap> caps;
    double left = mostCapsWidth - capSize;  // the waiting cap is always there
    for (const std::string& symbol : content.heldModifierSymbols) {
        const QString text = shown(symbol);
        const double width = std::max(capSize, std::ceil(QFontMetricsF(font).horizontalAdvance(text)) + capPadding);
        left -= width + capGap;
        if (left < 0) break;
        caps.push_back({text, width});
    }
    return caps;
}

void drawRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, radius, radius);
}

void drawCap(QPainter& painter, const QRectF& rect, const QColor& surface, double foot) {
    drawRounded(painter, rect, capRadius, outline);
    drawRounded(painter, rect.adjusted(1, 1, -1, -1 - foot), capRadius - 1, surface);
}

/// The key caps, then the place where the next key will stand.
void drawCaps(QPainter& painter, const RecorderPanelContent& content, const QRectF& well) {
    const QFont font = fontOf(capTextSize, QFont::Medium);
    const std::vector<KeyCap> caps = capsOf(content, font);
    double width = capSize;
    for (const KeyCap& cap : caps) width += cap.width + capGap;
    double x = std::round(well.center().x() - width / 2);
    const double y = std::round(well.center().y() - capSize / 2);
    for (const KeyCap& cap : caps) {
        const QRectF rect(x, y, cap.width, capSize);
        drawCap(painter, rect, card, capFoot);
        painter.setFont(font);
        painter.setPen(ink);
        // This sign's place in fonts is that of an accent.
        const double lower = cap.text == u"\u2303" ? capTextSize * 0.2 : 0;
        painter.drawText(rect.adjusted(0, lower, 0, lower - capFoot), Qt::AlignCenter, cap.text);
        x += cap.width + capGap;
    }
    const QRectF waiting(x, y, capSize, capSize);
    drawCap(painter, waiting, cream, 0);
    painter.fillRect(
        QRectF(waiting.center().x() - caretWidth / 2, waiting.center().y() - caretHeight / 2, caretWidth, caretHeight),
        bronze);
}

std::vector<Paragraph> messageOf(const RecorderPanelContent& content) {
    std::vector<Paragraph> message;
    int linesLeft = mostMessageLines;
    for (const std::string& text : content.message) {
        if (linesLeft == 0) break;
        const bool isHeading = message.empty() && content.message.size() > 1;
        message.emplace_back(shown(text), fontOf(messageSize, isHeading ? QFont::Medium : QFont::Normal), messageLine,
                             linesLeft);
        linesLeft -= message.back().lineCount();
    }
    return message;
}

RecorderPicture pictureOf(const QImage& image) {
    RecorderPicture picture{.width = static_cast<std::uint16_t>(image.width()),
                            .height = static_cast<std::uint16_t>(image.height()),
                            .pixels = {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * picture.height);
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(picture.pixels.data() + static_cast<std::size_t>(y) * picture.width, image.constScanLine(y),
                    sizeof(std::uint32_t) * picture.width);
    }
    return picture;
}

}  // namespace

RecorderPicture drawRecorderPanel(const RecorderPanelContent& content, double scale) {
    scale = std::clamp(scale, 1.0, mostScale);
    const Paragraph prompt(shown(content.prompt), fontOf(promptSize, QFont::DemiBold), promptLine, mostPromptLines);
    const std::vector<Paragraph> message = messageOf(content);
    double messageHeight = 0;
    for (const Paragraph& paragraph : message) messageHeight += paragraph.height();

    const double wellTop = padding + prompt.height() + gap;
    const double messageTop = wellTop + wellHeight + gap;
    const double height = std::max(leastHeight, messageTop + messageHeight + padding);
    QImage image(static_cast<int>(std::ceil(panelWidth * scale)), static_cast<int>(std::ceil(height * scale)),
                 QImage::Format_RGB32);
    image.fill(paper);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(scale, scale);

    prompt.draw(painter, padding, ink);
    const QRectF well(padding, wellTop, textWidth, wellHeight);
    drawRounded(painter, well, wellRadius, bronze);
    drawRounded(painter, well.adjusted(wellOutline, wellOutline, -wellOutline, -wellOutline), wellRadius - wellOutline,
                card);
    drawCaps(painter, content, well);
    // Room that the texts leave is shared by both sides of them.
    double y = messageTop + std::max(0.0, (height - padding - messageTop - messageHeight) / 2);
    for (const Paragraph& paragraph : message) {
        paragraph.draw(painter, y, message.size() > 1 ? ink : slate);
        y += paragraph.height();
    }
    painter.end();
    RecorderPicture picture = pictureOf(image);
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0x00FFFFFFU;
    return picture;
}

}  // namespace velmorand
