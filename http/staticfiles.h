#pragma once

#include "http/request.h"
#include "http/response.h"

#include <QHash>

#include <optional>

namespace http {

/// The files of a page, compiled into the program as Qt resources. They may load nothing from elsewhere.
class StaticFiles
{
public:
    StaticFiles() = default;
    /// All below a folder, such as ":/panel", by their paths there; index.html answers for its folder.
    explicit StaticFiles(const QString& folder);

    /// Of a GET or HEAD; nothing when no file has that path. 304 when the client has it.
    std::optional<Response> find(const Request& request) const;

private:
    struct File
    {
        QByteArray bytes;
        QByteArray type;
        QByteArray tag;
    };
    QHash<QString, File> m_files;
};

} // namespace http
