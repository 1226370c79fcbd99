#include "app/Console.h"

#include "base/EditorSession.h"
#include "base/Translation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <utility>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

struct Output {
    int error = 0; ///< the first; afterwards the stream takes nothing more
    std::vector<KorString> stored;
};

Output& output() {
    return EditorSession::currentPart<Output>();
}

void put(const std::string& text) {
    errno = 0;
    if (std::cout.good() && !(std::cout << text))
        output().error = errno;
}

bool flush() {
    if (!std::cout.good())
        return false;
    errno = 0;
    if (std::cout.flush() && std::fflush(stdout) == 0 && !std::ferror(stdout))
        return true;
    output().error = errno;
    std::cout.setstate(std::ios::badbit);
    return false;
}

// Wide enough for anything: the output goes to a file or to another program.
constexpr int kNoLimit = 1 << 30;
// Longer cells are printed whole, but the lines of others are not filled up to them.
constexpr qsizetype kWidestColumn = 100;

int outputWidth() {
    winsize size{};
    const bool terminal = isatty(STDOUT_FILENO) && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    return terminal && size.ws_col > 0 ? size.ws_col : kNoLimit;
}

// Marks that would turn the rest of the line around.
bool turnsDirection(QChar c) {
    return (c >= QChar(0x202A) && c <= QChar(0x202E)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
}

QString oneLine(const KorString& text) {
    QString line;
    for (const QChar c : QString::fromUtf8(text.view())) {
        if (c == '\n')
            line += "\\n";
        else if (c.category() == QChar::Other_Control || turnsDirection(c))
            line += QString("\\x%1").arg(int(c.unicode()), 2, 16, QChar('0'));
        else
            line += c;
    }
    return line;
}

// Letters and marks that a terminal draws as one.
qsizetype widthOf(const QString& text) {
    return text.normalized(QString::NormalizationForm_C).size();
}

QString padded(const QString& text, qsizetype width) {
    return text + QString(std::max(width - widthOf(text), qsizetype(0)), QChar(' '));
}

void printLine(QString line, int width) {
    while (line.endsWith(' '))
        line.chop(1);
    if (line.size() > width)
        line = line.left(std::max(width - 1, 0)) + QChar(0x2026);
    put(line.toStdString() + '\n');
}

void printDocument(const QJsonDocument& document) {
    put(document.toJson(QJsonDocument::Indented).toStdString());
}

} // namespace

namespace Console {

void complain(const KorString& sentence) {
    flush();
    std::cerr << "detailstyles: " << oneLine(sentence).toStdString() << '\n';
}

void say(const KorString& line) {
    put(oneLine(line).toStdString() + '\n');
}

void sayAsItIs(const std::string& text) {
    put(text);
}

void sayStored(const KorString& line) {
    say(line);
    noteStored(line);
}

void noteStored(const KorString& sentence) {
    output().stored.push_back(sentence);
}

bool finish() {
    const std::vector<KorString> stored = std::exchange(output().stored, {});
    if (flush())
        return true;
    const int error = std::exchange(output().error, 0);
    complain(KorString::format(translated("The output could not be written to its end (%s); free some space "
                                          "or send it elsewhere."),
                               {std::strerror(error ? error : EIO)}));
    if (!stored.empty())
        complain(translated("All the same this was done:"));
    std::ranges::for_each(stored, &complain);
    return false;
}

QString text(const KorString& utf8) {
    return QString::fromUtf8(utf8.view());
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
            if (const qsizetype cell = widthOf(line.back()); cell <= kWidestColumn)
                widths[i] = std::max(widths[i], cell);
        }
    };
    addLine(heading);
    std::ranges::for_each(rows, addLine);
    const int width = outputWidth();
    for (const std::vector<QString>& line : lines) {
        QString text;
        for (std::size_t i = 0; i < line.size(); ++i)
            text += i + 1 < line.size() ? padded(line[i], widths[i]) + "  " : line[i];
        printLine(text, width);
    }
}

} // namespace Console
