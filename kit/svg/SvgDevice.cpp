#include <QSvgGenerator>

// A library of its own, loaded with the first SVG that is written: charts on a screen need neither Qt Svg nor
// what that brings along.

extern "C" Q_DECL_EXPORT QPaintDevice *graphSvgDevice(QIODevice *output, int width, int height,
                                                      int resolution)
{
    auto *generator = new QSvgGenerator;
    generator->setOutputDevice(output);
    generator->setSize(QSize(width, height));
    generator->setViewBox(QRect(0, 0, width, height));
    generator->setResolution(resolution);
    return generator;
}
