#pragma once

#include <QString>
#include <QStringList>
#include <limits>

// What a grid cell holds and what an editor may put into it.
enum class SpreadCellKind {
    Text, // free text, optionally multi-line and limited in length
    Integer, // whole number with a range and a spin step
    Float, // number with a range
    List, // one item of a list, or any text written by the program
};

// The kind of a cell with its range or list. Cells and columns share these by value;
// the grid keeps one copy of each distinct setting.
struct CSpreadCellType
{
    SpreadCellKind Kind = SpreadCellKind::Text;
    double Min = std::numeric_limits<qint32>::min();
    double Max = std::numeric_limits<qint32>::max();
    double SpinStep = 1;
    int MaxLength = 0; // 0: no limit
    bool MultiLine = false;
    QStringList ListItems;
    // The text an editor starts from in an empty cell; never written into cells.
    QString Default;

    bool operator==(const CSpreadCellType &other) const = default;

    bool IsNumber() const { return Kind == SpreadCellKind::Integer || Kind == SpreadCellKind::Float; }

    // Whether a user may commit this text to a cell of this kind. The program's own
    // writes are not checked: it may store anything, and readers deal with it.
    bool Accepts(const QString &text) const;

    static CSpreadCellType TextType(int maxLength = 0, bool multiLine = false);
    static CSpreadCellType IntegerType(double min, double max, double spinStep = 1);
    static CSpreadCellType FloatType(double min, double max);
    static CSpreadCellType ListType(const QStringList &items);
};
