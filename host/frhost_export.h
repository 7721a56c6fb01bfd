#pragma once

#include <QtCore/qglobal.h>

/// Marks what the plugin and its host program share. Exceptions, metatypes and MockFactory must be the very
/// same objects on both sides of the plugin boundary, so all of them are exported from the one shared
/// library.
#if defined(FRHOST_LIBRARY)
#define FRHOST_EXPORT Q_DECL_EXPORT
#else
#define FRHOST_EXPORT Q_DECL_IMPORT
#endif
