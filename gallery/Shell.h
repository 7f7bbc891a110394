#pragma once

#include "HeatmapFolder.h"
#include "Instrument.h"
#include "PageList.h"

#include <QObject>
#include <QVariant>

namespace gallery {

// What the QML side knows about the program, as the context property `shell`.
class Shell : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList pages READ pages CONSTANT)
    Q_PROPERTY(QString page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(QVariantMap pageInfo READ pageInfo NOTIFY pageChanged)
    Q_PROPERTY(bool takesPictures READ takesPictures CONSTANT)
    Q_PROPERTY(bool softwareRendering READ softwareRendering CONSTANT)
    Q_PROPERTY(bool light READ isLight CONSTANT)
    Q_PROPERTY(QVariantMap recording READ recording CONSTANT)
    Q_PROPERTY(gallery::HeatmapFolder *heatmaps READ heatmaps CONSTANT)
    Q_PROPERTY(bool instrumentReady READ instrumentReady NOTIFY instrumentChanged)
    Q_PROPERTY(QString instrumentError READ instrumentError NOTIFY instrumentChanged)

public:
    Shell(const Options &options, const QString &simulator, QObject *parent = nullptr);

    QVariantList pages() const;
    QString page() const { return m_page; }
    QVariantMap pageInfo() const;
    bool takesPictures() const { return m_options.takesPictures(); }
    bool softwareRendering() const;
    bool isLight() const { return m_options.light; }
    // What is replayed; empty when nothing is.
    QVariantMap recording() const { return m_options.replay.description; }
    HeatmapFolder *heatmaps() { return &m_heatmaps; }
    // True at once for a page that needs none.
    bool instrumentReady() const;
    QString instrumentError() const { return m_instrument.errorText(); }

    // For pages whose picture shows several sweeps together: makes the instrument hold this one next.
    Q_INVOKABLE void holdSweep(int number);

    // The text of a document in the folder of pages.
    Q_INVOKABLE QString source(const QString &document) const;
    // Where a page may write a file of this name.
    Q_INVOKABLE QString exportFile(const QString &name) const;

public slots:
    void setPage(const QString &page);

signals:
    void pageChanged();
    void instrumentChanged();
    // A page has asked for the next sweep.
    void sweepHeld();

private:
    void runInstrument(int heldSweep);

    Options m_options;
    PageList m_pages;
    QString m_page;
    HeatmapFolder m_heatmaps;
    Instrument m_instrument;
};

} // namespace gallery
