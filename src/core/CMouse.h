#pragma once

#include <Qt>

// A scoped busy pointer: the first SetPointer remembers the pointer on screen, every
// call sets one, and destruction puts the remembered one back.
class CMouse
{
public:
    CMouse() = default;
    ~CMouse();
    CMouse(const CMouse &) = delete;
    CMouse &operator=(const CMouse &) = delete;

    void SetPointer(Qt::CursorShape NewPointer = Qt::WaitCursor);
    bool Remembered() const { return m_remembered; }

private:
    bool m_remembered = false;
    int m_pushed = 0;
};
