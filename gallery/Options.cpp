#include "Options.h"

#include "PageList.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace gallery {

namespace {

const int failed = 1;
const int badUsage = 2;

QSize parsedSize(const QString &text)
{
    static const QRegularExpression pattern("^(\\d{3,4})x(\\d{3,4})$");
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return QSize();
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    return size.width() >= 480 && size.height() >= 320 ? size : QSize();
}

} // namespace

CommandLineAnswer parsedCommandLine(const QStringList &arguments, Options *options)
{
    const QCommandLineOption page("page", "Open this page.", "name");
    const QCommandLineOption shot("shot", "Draw the page to a picture and leave.", "file");
    const QCommandLineOption shots("shots", "Draw every page to a picture and leave.", "folder");
    const QCommandLineOption size("size", "Size of the screen: 1024x600 (default), 800x480, ...", "WxH",
                                  "1024x600");
    const QCommandLineOption seed("seed", "Start value of the simulated instruments.", "number", "1");
    const QCommandLineOption replay(
        "replay", "Show this recording; once each for a trace, a table of events and a table of regions.",
        "file");
    const QCommandLineOption light("light", "Light colours, for bright surroundings.");
    const QCommandLineOption list("list", "Name the pages and leave.");
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows what the chart items do, fed by simulated instruments.");
    parser.addOptions({page, shot, shots, size, seed, replay, light, list});
    const QCommandLineOption help = parser.addHelpOption();

    if (!parser.parse(arguments))
        return {parser.errorText(), badUsage};
    if (parser.isSet(help))
        return {parser.helpText(), 0};
    if (!parser.positionalArguments().isEmpty())
        return {"Unexpected argument: " + parser.positionalArguments().first(), badUsage};

    options->list = parser.isSet(list);
    options->light = parser.isSet(light);
    options->pictureFile = parser.value(shot);
    options->pictureFolder = parser.value(shots);
    if (parser.isSet(shot) && parser.isSet(shots))
        return {"--shot draws one page, --shots all of them: give one of the two.", badUsage};
    QString error;
    if (!options->replay.read(parser.values(replay), &error))
        return {error, failed};

    options->size = parsedSize(parser.value(size));
    if (!options->size.isValid())
        return {"--size wants WIDTHxHEIGHT, at least 480x320.", badUsage};
    bool isNumber = false;
    options->seed = parser.value(seed).toInt(&isNumber);
    if (!isNumber)
        return {"--seed wants a whole number.", badUsage};

    const PageList pages = availablePages(*options);
    options->page = parser.isSet(page) ? parser.value(page) : pageNamed(pages, "replay") ? "replay" : "home";
    if (!pageNamed(pages, options->page))
        return {"There is no page " + options->page + ". Pages: " + pageNames(pages).join(", "), badUsage};
    return {};
}

} // namespace gallery
