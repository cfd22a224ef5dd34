// A Qt window in the window manager's decorations, to be arranged.

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QStringList>

namespace {

class QtWindow : public QRasterWindow {
protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(0, 0, width(), height(), QColor(0xf4, 0xf1, 0xe8));
        painter.drawText(QRect(0, 0, width(), height()), Qt::AlignCenter, title());
    }
};

/// "640x420"; invalid when it is something else.
QSize parsedSize(const QString& text) {
    const QStringList numbers = text.split(QLatin1Char('x'));
    return numbers.size() == 2 ? QSize(numbers.front().toInt(), numbers.back().toInt()) : QSize();
}

}  // namespace

int main(int count, char** texts) {
    QGuiApplication application(count, texts);
    QCommandLineParser parser;
    parser.addOptions({{QStringLiteral("title"), {}, QStringLiteral("text"), QStringLiteral("Qt")},
                       {QStringLiteral("size"), {}, QStringLiteral("WxH"), QStringLiteral("640x420")},
                       {QStringLiteral("minimum-size"), {}, QStringLiteral("WxH")},
                       {QStringLiteral("fixed"), QStringLiteral("the user may not resize it")}});
    parser.process(application);

    QtWindow window;
    window.setTitle(parser.value(QStringLiteral("title")));
    window.resize(parsedSize(parser.value(QStringLiteral("size"))));
    if (const auto minimum = parsedSize(parser.value(QStringLiteral("minimum-size"))); minimum.isValid())
        window.setMinimumSize(minimum);
    if (parser.isSet(QStringLiteral("fixed"))) {
        window.setMinimumSize(window.size());
        window.setMaximumSize(window.size());
    }
    window.show();
    return QGuiApplication::exec();
}
