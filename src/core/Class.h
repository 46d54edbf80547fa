#pragma once

#include "core/ICollection.h"

#include <memory>
#include <utility>

// The object factory: every object is made in two stages, creation and then its Init
// with the arguments given, so that no half-made object is ever handed out.
namespace Class {

template <typename T, typename... Args> std::unique_ptr<T> Make(Args &&...args)
{
    auto object = std::make_unique<T>();
    object->Init(std::forward<Args>(args)...);
    return object;
}

// Lists are set up through their collection view.
template <typename T> std::unique_ptr<T> MakeCollection()
{
    auto list = std::make_unique<T>();
    static_cast<ICollection *>(list.get())->Init();
    return list;
}

} // namespace Class
