#pragma once

#include "core/CKeyedList.h"
#include "core/ICollection.h"
#include "player/CPreviewLine.h"
#include "player/ITimingPreviewHooks.h"

#include <QString>
#include <vector>

class CSpread;
class IPictureBox;
class IPlayerWindow;
class isub;

// The live preview of one timing document: a line per grid row, keyed by the decimal
// text of the row's serial number (the hidden last column), so that a line follows its
// row through insertions, deletions and moves. The grid tells it of its rows through
// the preview hooks; each tick of the window's timer calls Refresh with the player's
// position.
//
// Besides the keyed list the preview keeps a compact table of every line's times and
// shown state in list order. A tick walks that table and calls only the lines that
// have something to do (current ones, and shown ones that are no longer current), in
// the order in which the lines would have heard the refresh themselves.
class CPreview : public ICollection, public ITimingPreviewHooks
{
public:
    CPreview();
    ~CPreview() override;
    CPreview(const CPreview &) = delete;
    CPreview &operator=(const CPreview &) = delete;

    // ICollection
    void Init() override { }
    // The document whose Changed goes up when the preview is told of a row.
    void Init(isub *document);
    qint32 SerialNo() const override { return m_lastSerial; }
    void Delete(const QString &key) override;
    qsizetype Count() const override { return m_lines.Count(); }
    isub *item(const QString &key) override { return m_lines.Find(key); }
    isub *itemAt(qsizetype index) override { return m_lines.At(index); }
    // Lines come only from Create.
    void Add() { }

    // A line for a serial number; an existing line of that number is given back as it is.
    CPreviewLine *Create(qint32 serial);
    bool Exists(const QString &key) const { return m_lines.Exists(key); }
    CPreviewLine *Item(const QString &key) const { return m_lines.Find(key); }
    CPreviewLine *Line(qint32 serial) const;
    CPreviewLine *At(qsizetype index) const { return m_lines.At(index); }
    auto begin() const { return m_lines.begin(); }
    auto end() const { return m_lines.end(); }
    // Empties the list (a new document); the grid makes the lines of its rows again.
    void Clear();

    // The tick: every line hears the position in seconds.
    void Refresh(double position);
    // The window's timer: the position of the document's player, when there is one;
    // without a player (or its control) the tick does nothing.
    void Tick(const IPlayerWindow *player);
    // Kept for the window's menu; there is nothing to bring up to date.
    void UpdatePreview() { }
    // Notes each line's row and its check-disabled mark from the grid, walking all rows.
    void UpdateLineNumber();
    // Erases the picture; no line stands on it afterwards.
    void ClearAllPreview();

    // The picture the lines print on (not owned; nullptr for none). Setting it reads
    // its height.
    IPictureBox *Picture() const { return m_picture; }
    void setPicture(IPictureBox *picture);
    // The picture's scale height, rounded; read again when the picture is resized.
    qint32 Height() const { return m_height; }
    void PictureResized();

    // The timing grid whose rows the lines stand for (not owned).
    CSpread *Grid() const { return m_grid; }
    void setGrid(CSpread *grid) { m_grid = grid; }
    // Sets the grid and makes the line of every row that has none yet, as a document
    // does when its window gives it the grid.
    void AttachGrid(CSpread *grid);
    isub *Document() const { return m_document; }
    // Raises the document's Changed.
    void MarkChanged();

    // The serial number in the last column of a grid row (0 for none) and its line.
    qint32 RowSerial(int row) const;
    CPreviewLine *RowLine(int row) const;

    // ITimingPreviewHooks: the grid's calls, handed to basPreview.
    void CreatePreviewLine(int row) override;
    void DeletePreviewLine(int row) override;
    void UpdatePreviewCell(int col, int row) override;
    void ClearPreview() override { Clear(); }

private:
    friend class CPreviewLine;

    struct Slot
    {
        double Start;
        double End;
        CPreviewLine *Line;
        bool Shown;
    };
    void SyncSlot(const CPreviewLine &line);

    CKeyedList<CPreviewLine> m_lines;
    std::vector<Slot> m_slots;
    IPictureBox *m_picture = nullptr;
    CSpread *m_grid = nullptr;
    isub *m_document = nullptr;
    qint32 m_height = 0;
    qint32 m_lastSerial = 0;
};
