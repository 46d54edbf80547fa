#pragma once

#include "player/CAssRenderer.h"
#include "script/CSSAContent.h"

#include <QImage>
#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <unordered_map>
#include <vector>

class CTiming;
class CTimingGrid;

// The subtitles of a timing document drawn over the video: keeps a renderer's track in
// step with the document's grid and draws it over frames.
//
// The track gets the document as the document would write it as ASS: the head from its
// script information and styles, and one event per row, made by the grid's own store and
// the line writer, keyed by the row's serial number. The grid model's signals tell which
// rows changed; only those rows are made and read again, so a keystroke costs one line
// whatever the length of the script. A change of rows or a reset of the model compares
// every row's cells with those its event was made from and remakes the changed ones. A
// changed head (styles, script information, the picture size) rebuilds the track.
//
// The changes are brought in on the next turn of the event loop, or at once by Flush()
// and Render(); TrackChanged() then tells that the frame on show should be drawn again.
class CAssOverlay : public QObject
{
    Q_OBJECT

public:
    explicit CAssOverlay(QObject *parent = nullptr);
    ~CAssOverlay() override;

    // The grid whose rows (and whose document's head) are drawn; nullptr draws nothing.
    // Not owned: the overlay lets go when the grid's model is destroyed.
    void Attach(CTimingGrid *grid);
    CTimingGrid *Grid() const { return m_grid; }

    CAssRenderer &Renderer() { return m_renderer; }
    const CAssRenderer &Renderer() const { return m_renderer; }

    // Brings the track in step now; true when it changed (and TrackChanged was sent).
    bool Flush();
    // Rows told of and not yet brought in.
    bool Pending() const { return m_fullScan || !m_dirtyRows.empty(); }
    // Brings the track in step and blends the subtitles of the time over the frame.
    bool Render(QImage &frame, double seconds);
    // One line on what keeps the subtitles from showing as written, "" when nothing does.
    QString Status() const;

    // The head of a document as it writes an ASS script: [Script Info] and the styles,
    // whatever its own script type.
    static QString AssHead(CTiming &document);

signals:
    void TrackChanged();

private:
    void Detach();
    void OnDataChanged(int firstRow, int lastRow, const QList<int> &roles);
    void OnStructureChanged();
    void Schedule();
    bool BringInStep();
    bool FullScan();
    bool UpdateRow(int row, qint32 serial, quint32 scan = 0);
    bool DropKey(qint32 serial);

    static constexpr int kCells = 15; // the columns a line is made from

    CAssRenderer m_renderer;
    CTimingGrid *m_grid = nullptr;
    QList<QMetaObject::Connection> m_connections;
    // The serial number of each row at the last full scan.
    std::vector<qint32> m_rowSerials;
    // What each key's event was made from: the row's cells, its row (the event's place
    // in the script), and the number of the last full scan that found it.
    struct Made
    {
        std::array<QString, kCells> Cells;
        int Row = 0;
        quint32 Scan = 0;
    };
    std::unordered_map<qint32, Made> m_made;
    quint32 m_scan = 0;
    // Keys whose row holds a number cell without a number: their event stays as it was.
    QSet<qint32> m_faulty;
    std::vector<int> m_dirtyRows;
    bool m_fullScan = false;
    bool m_scheduled = false;
    QStringList m_effects;
    // The parent of the lines made from rows: ASS, the whole mask, times in full.
    CSSAContent m_lines;
};
