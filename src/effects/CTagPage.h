#pragma once

#include <QString>

#include <array>

// The values of the tag page of the effect window: one field per control, named after
// it. A group of option buttons holds the 0-based index of the selected button (-1 for
// none); number boxes hold their text, converted only when a tag is built.
struct CTagPage
{
    // tag 1: colour and alpha
    int optColor = -1; // 0..3 give "\1c".."\4c", none "\c"
    int optAlpha = -1; // 0..3 give "\1a".."\4a", none "\alpha"
    int sldAlpha = 0; // 0..255; 0 leaves the alpha out
    qint64 picColor = 0xFFFFFF;
    // tag 2..8
    QString lstFontName = QStringLiteral("Arial"); // the selected entry
    QString txtFontSize = QStringLiteral("20");
    int optBold = 0; // 0 on, 1 off
    int optItalic = 0;
    int optUnderline = 0;
    int optStrikeThru = 0;
    int optAlignment = 1; // 0..8: the keypad position minus one
    int optAlia = 0; // 0 the new numbering "\an", 1 the old "\a"
    // tag 9..12
    int optBlur = 0;
    QString txtShadow = QStringLiteral("2");
    QString txtBorder = QStringLiteral("2");
    QString txtDistance = QStringLiteral("0");
    // tag 13: boxes 0..2 rotate about x, y, z; boxes 3..5 give the starting state that
    // stands ahead of a gradual rotation
    std::array<bool, 6> chkRotate {};
    std::array<QString, 6> txtRotateAngle { QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0"),
        QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0") };
    // tag 14
    std::array<bool, 2> chkScale {};
    std::array<QString, 2> txtScale { QStringLiteral("100"), QStringLiteral("100") };
    // tag 15: first option "\fade" with seven values, second "\fad" with two
    int optFading = 1;
    std::array<QString, 3> txtAlpha { QStringLiteral("255"), QStringLiteral("0"), QStringLiteral("255") };
    std::array<QString, 6> txtFadingTime { QStringLiteral("0"), QStringLiteral("500"), QStringLiteral("2000"),
        QStringLiteral("2500"), QStringLiteral("500"), QStringLiteral("500") };
    // tag 16..22
    QString txtKaraOK = QStringLiteral("50");
    std::array<QString, 2> txtMoveStart { QStringLiteral("0"), QStringLiteral("0") };
    std::array<QString, 2> txtMoveEnd { QStringLiteral("100"), QStringLiteral("100") };
    std::array<QString, 2> txtMoveTime {};
    QString txtOrgX = QStringLiteral("0");
    QString txtOrgY = QStringLiteral("0");
    QString txtSiteX = QStringLiteral("0");
    QString txtSiteY = QStringLiteral("0");
    std::array<QString, 2> txtClipStart { QStringLiteral("0"), QStringLiteral("0") };
    std::array<QString, 2> txtClipEnd { QStringLiteral("100"), QStringLiteral("100") };
    int optWrap = 0; // 0..3 give "\q0".."\q3"
    QString txtEncode = QStringLiteral("134");

    // the gradual frame below the tabs
    bool chkAccel = false;
    QString txtAccelStart = QStringLiteral("0"); // "开始时间偏移量", ms
    QString txtAccelEnd = QStringLiteral("0"); // "结束时间偏移量", ms
    QString txtAccel = QStringLiteral("1"); // "加速度"
};
