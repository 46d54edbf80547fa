#pragma once

#include <QList>

class QAction;

// A document window with menu entries of its own: while it is the active child, the
// frame's File menu shows them behind its open entries, as a child's menu takes the
// frame's place.
class IWindowMenu
{
public:
    virtual ~IWindowMenu() = default;
    virtual QList<QAction *> FileMenuEntries() const = 0;
};
