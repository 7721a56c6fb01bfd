#pragma once

#include "currenttime.h"
#include "frhost_export.h"
#include "parammanager.h"

#include <QSharedPointer>

/// Makes the objects that stand for the world outside: a new T, or the one that was put in its place.
template <typename T>
class MockFactory
{
public:
    /// The object in the place of T; null for the real one. It stays the property of whoever set it.
    static T* mocked;

    static QSharedPointer<T> create()
    {
        if (mocked != nullptr)
            return QSharedPointer<T>(mocked, [](T*) {});
        return QSharedPointer<T>(new T);
    }
};

template <typename T>
T* MockFactory<T>::mocked = nullptr;

#if !defined(FRHOST_LIBRARY)
extern template class FRHOST_EXPORT MockFactory<CurrentTime>;
extern template class FRHOST_EXPORT MockFactory<hw::ParamManager>;
#endif
