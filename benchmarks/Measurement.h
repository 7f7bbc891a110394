#pragma once

#include <QSize>
#include <QVector>

#include <functional>

namespace benchmark {

// What one process measures, from the command line:
//   --work new|pan|window|cursor|roll|first-pan|heat|waterfall|ten|idle|empty --samples N --size WxH --pen PIXELS --traces N --seconds S
struct Job
{
    QString work = QStringLiteral("new");
    int samples = 1000;
    QSize size{800, 480};
    int pen = 2;
    int traces =
        0; // of a whole screen, with grid, labels, legend, cursor and markers; 0: one trace and nothing else
    bool logarithmic = false; // the horizontal axis of bare traces and of units
    double seconds = 1.0;     // that the frames of one run may take

    // Ends the process with a message when the arguments make no sense.
    static Job fromArguments(int argc, char **argv);
};

// A chart to be measured. Everything is called from the main thread.
class Contender
{
public:
    virtual ~Contender() = default;

    // The arrays that useSet() refers to, and an open window with the trace in it. Whatever an application would do
    // once only, or could be spared by keeping its data in the chart's own form, belongs here.
    virtual void prepare(const Job &job, const QVector<QVector<double>> &sets) = 0;
    // Replaces all samples, which are at x = 0, 1, 2...
    virtual void useSet(int set) = 0;
    virtual void setVisible(double first, double last) = 0;
    // To a pixel column, counted from somewhere near the left edge. Only whole screens have a cursor.
    virtual void moveCursor(int pixel) = 0;
    // Returns when the window's own image holds what was asked for, and nothing else is due.
    virtual void frame() = 0;
    // Called before the frames that count. What a chart does some time after it got its data is no part of these.
    virtual void settle() {}
};

// Runs the job and prints its line:
//   work name samples WxH pen frames cpu-median cpu-min cpu-max wall-median held peak
// Times are milliseconds a frame, of the processor and of the clock on the wall; memory is what the chart holds, and
// held at most, in bytes a sample beyond the arrays it was given.
int run(const char *name, const Job &job, Contender &contender);

// The steps that such a run is made of: the chart is opened with a little data, shows and moves all of it, and gets a
// change for each frame.
void open(const Job &job, Contender &contender);
void warmUp(const Job &job, Contender &contender);
void change(const Job &job, Contender &contender, int frame);

// Prints the line of a job of another kind, which `frame` is one round of.
int run(const char *name, const Job &job, const std::function<void(int)> &frame);

// Noise around a sine; another seed gives other values.
QVector<double> noisyTrace(int samples, unsigned int seed);

// Software rendering without a display, unless the environment asks for something else.
void chooseSoftwareRendering();

} // namespace benchmark
