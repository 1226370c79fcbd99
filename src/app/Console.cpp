#include "app/Console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <iostream>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

// Wide enough for anything: the output goes to a file or to another program.
constexpr int kNoLimit = 1 << 30;

int outputWidth() {
    winsize size{};
    const bool terminal = isatty(STDOUT_FILENO) && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    return terminal && size.ws_col > 0 ? size.ws_col : kNoLimit;
}

QString oneLine(const KorString& text) {
    QString line;
    for (const QChar c : QString::fromUtf8(text.view()).normalized(QString::NormalizationForm_C)) {
        if (c == '\n')
            line += "\\n";
        else if (c.category() == QChar::Other_Control)
            line += QString("\\x%1").arg(int(c.unicode()), 2, 16, QChar('0'));
        else
            line += c;
    }
    return line;
}

void printLine(QString line, int width) {
    while (line.endsWith(' '))
        line.chop(1);
    if (line.size() > width)
        line = line.left(std::max(width - 1, 0)) + QChar(0x2026);
    std::cout << line.toStdString() << '\n';
}

void printDocument(const QJsonDocument& document) {
    std::cout << document.toJson(QJsonDocument::Indented).toStdString();
}

} // namespace

namespace Console {

void complain(const KorString& sentence) {
    std::cout.flush();
    std::cerr << "detailstyles: " << sentence.view() << '\n';
}

void say(const KorString& line) {
    std::cout << line.view() << '\n';
}

void print(const QJsonArray& document) {
    printDocument(QJsonDocument(document));
}

void print(const QJsonObject& document) {
    printDocument(QJsonDocument(document));
}

void printColumns(const std::vector<KorString>& heading, const std::vector<std::vector<KorString>>& rows) {
    if (rows.empty())
        return;
    std::vector<std::vector<QString>> lines;
    std::vector<qsizetype> widths(heading.size(), 0);
    const auto addLine = [&](const std::vector<KorString>& cells) {
        std::vector<QString>& line = lines.emplace_back();
        for (std::size_t i = 0; i < heading.size(); ++i) {
            line.push_back(i < cells.size() ? oneLine(cells[i]) : QString());
            widths[i] = std::max(widths[i], line.back().size());
        }
    };
    addLine(heading);
    std::ranges::for_each(rows, addLine);
    const int width = outputWidth();
    for (const std::vector<QString>& line : lines) {
        QString text;
        for (std::size_t i = 0; i < line.size(); ++i)
            text += i + 1 < line.size() ? line[i].leftJustified(widths[i] + 2) : line[i];
        printLine(text, width);
    }
}

} // namespace Console
