#pragma once

#include <utility>

// Runs a function when the scope ends, however it ends: the way to put back what a scope
// changes for a while (a document's type and options while a file of another type is
// made, for instance).
template <typename F> class CScopeExit
{
public:
    explicit CScopeExit(F f)
        : m_f(std::move(f))
    { }
    ~CScopeExit() { m_f(); }
    CScopeExit(const CScopeExit &) = delete;
    CScopeExit &operator=(const CScopeExit &) = delete;

private:
    F m_f;
};
