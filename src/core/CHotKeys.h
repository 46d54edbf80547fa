#pragma once

#include <QtGlobal>
#include <functional>

// The key codes of the working keys; 0 means none. A new table holds zeros: the
// defaults are applied when the settings are read at start.
class CHotKeys
{
public:
    void Init();

    // Ctrl+S: fixed, not offered for change.
    qint16 HOTKEY_SaveFile = 83;

    qint16 HOTKEY_PlayPause() const { return m_keys[0]; }
    qint16 HOTKEY_PlayBack() const { return m_keys[1]; }
    qint16 HOTKEY_PlayForword() const { return m_keys[2]; }
    qint16 HOTKEY_TimingStartTime() const { return m_keys[3]; }
    qint16 HOTKEY_TimingEndTime() const { return m_keys[4]; }
    qint16 HOTKEY_TimingTime() const { return m_keys[5]; }
    qint16 HOTKEY_TimingForword() const { return m_keys[6]; }
    qint16 HOTKEY_TimingBack() const { return m_keys[7]; }
    qint16 HOTKEY_Refresh() const { return m_keys[8]; }
    qint16 HOTKEY_SaveFile2() const { return m_keys[9]; }

    void setHOTKEY_PlayPause(qint16 code) { set(0, code); }
    void setHOTKEY_PlayBack(qint16 code) { set(1, code); }
    void setHOTKEY_PlayForword(qint16 code) { set(2, code); }
    void setHOTKEY_TimingStartTime(qint16 code) { set(3, code); }
    void setHOTKEY_TimingEndTime(qint16 code) { set(4, code); }
    void setHOTKEY_TimingTime(qint16 code) { set(5, code); }
    void setHOTKEY_TimingForword(qint16 code) { set(6, code); }
    void setHOTKEY_TimingBack(qint16 code) { set(7, code); }
    void setHOTKEY_Refresh(qint16 code) { set(8, code); }
    void setHOTKEY_SaveFile2(qint16 code) { set(9, code); }

    // The ten changeable keys in the order above.
    static constexpr int Count = 10;
    qint16 Key(int index) const { return m_keys[index]; }
    void setKey(int index, qint16 code) { set(index, code); }

    // Told after any key is written, so that the status bar shows it at once.
    std::function<void()> Changed;

private:
    void set(int index, qint16 code)
    {
        m_keys[index] = code;
        if (Changed)
            Changed();
    }
    qint16 m_keys[Count] = {};
};
