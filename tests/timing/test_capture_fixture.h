#pragma once

#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/IPlayerWindow.h"
#include "core/basSetting.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayer.h"
#include "player/ITimingPreviewHooks.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// Hot-key codes used by the capture tests.
namespace TestKeys {
constexpr int F5 = 116;
constexpr int F7 = 118;
constexpr int F8 = 119;
constexpr int F9 = 120;
constexpr int Enter = 13;
constexpr int Delete = 46;
} // namespace TestKeys

class CapturePlayerWindow : public IPlayerWindow
{
public:
    QString Tag() const override { return QStringLiteral("1"); }
    void setTag(const QString &) override { }
    QString Caption() const override { return QString(); }
    void setCaption(const QString &) override { }
    CPlayer *player() const override { return document; }

    CPlayer *document = nullptr;
};

// What the grid tells the preview, as "update 3 1" or "create 5".
class CaptureHooks : public ITimingPreviewHooks
{
public:
    void CreatePreviewLine(int row) override { Calls << QStringLiteral("create %1").arg(row); }
    void DeletePreviewLine(int row) override { Calls << QStringLiteral("delete %1").arg(row); }
    void UpdatePreviewCell(int col, int row) override
    {
        Calls << QStringLiteral("update %1 %2").arg(col).arg(row);
    }
    void ClearPreview() override { Calls << QStringLiteral("clear"); }

    QStringList Calls;
};

// A timing document with a grid of `rows` rows, a playing fake film of 10 minutes
// chosen as its player, the working keys F7 (time point), F8 (start), F9 (end), F5
// (refresh), and a scripted prompt.
class CaptureTest : public ::testing::Test
{
protected:
    explicit CaptureTest(int rows = 12)
    {
        SetPrompt(&prompt);
        previousSettings = SettingsFile();
        SetSettingsFile(dir.filePath(QStringLiteral("Velmar.ini")));

        keys.setHOTKEY_TimingTime(TestKeys::F7);
        keys.setHOTKEY_TimingStartTime(TestKeys::F8);
        keys.setHOTKEY_TimingEndTime(TestKeys::F9);
        keys.setHOTKEY_Refresh(TestKeys::F5);

        control.MediaDuration = 600;
        player.Init(1, &window, &control);
        player.setContent(QStringLiteral("/films/episode.mkv"));
        control.setPlayStateDirect(3);
        window.document = &player;

        doc.Init(1);
        doc.setPlayerWindow(&window);
        grid.SetPreviewHooks(&hooks);
        grid.ResetGrid();
        while (g().MaxRows() < rows)
            grid.AppendRow();
        capture = std::make_unique<CTimePointCapture>(doc, grid, &keys);
        hooks.Calls.clear();
        control.Calls.clear();
        doc.setChanged(false);
    }
    ~CaptureTest() override
    {
        capture.reset();
        SetPrompt(nullptr);
        SetSettingsFile(previousSettings);
    }

    CSpread &g() { return grid.Spread(); }
    void Activate(int col, int row)
    {
        g().setRow(row);
        g().setCol(col);
        g().ActivateCell();
    }
    QString Cell(int col, int row) { return g().GetText(col, row); }
    // The cursor as "col,row".
    QString Cursor() { return QStringLiteral("%1,%2").arg(g().ActiveCol()).arg(g().ActiveRow()); }
    void At(double seconds) { control.setPositionDirect(seconds); }
    CaptureKeyResult Down(int code) { return capture->KeyDown(CCaptureKey::Down(code)); }
    CaptureKeyResult Press(char16_t ch) { return capture->KeyPress(CCaptureKey::Press(ch)); }

    CScriptedPrompt prompt;
    QTemporaryDir dir;
    QString previousSettings;
    CHotKeys keys;
    CFakeMediaControl control;
    CapturePlayerWindow window;
    CPlayer player;
    CTiming doc;
    CTimingGrid grid;
    CaptureHooks hooks;
    std::unique_ptr<CTimePointCapture> capture;
};
