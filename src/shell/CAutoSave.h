#pragma once

#include "shell/IAutoSaveDocument.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

// The auto-save timer's work, one call a second: every AutoSaveTime seconds each open
// document is written whole, changed or not, to a new time-stamped file in the
// "AutoSave" folder, and copies older than AutoDelTime hours are deleted there.
class CAutoSave
{
public:
    qint32 AutoSaveTime = 180; // seconds between runs
    double AutoDelTime = 24; // hours a copy is kept
    qint32 Counter() const { return m_counter; }

    // One second has passed. `documents` are the open windows in the application's
    // order. Returns true when this tick ran a save.
    bool Tick(const std::vector<IAutoSaveDocument *> &documents);

    // The "Message" panel of the status bar.
    std::function<void(const QString &)> StatusMessage;
    // The files written by the last run.
    QStringList Written;

    static QString Folder();
    // "(yyyy-mm-dd-hh-mm-ss)" of the present time.
    static QString Stamp();

private:
    void DeleteOldFiles(const QString &folder) const;
    static QString FileNameFor(const QString &folder, const QString &extension);
    qint32 m_counter = 0;
};
