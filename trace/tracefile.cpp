#include "trace/tracefile.h"

#include "trace/traceline.h"
#include "trace/tracetr.h"

#include <QFileInfo>

#include <cstdio>

namespace trace {

QString TraceFile::judge(const QString& name, bool isMasked)
{
    const QFileInfo there(name);
    QFile file(name);
    if (!there.isFile() || there.size() == 0 || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray head = file.readLine().trimmed();
    if (!traceline::isHead(head))
        return tr("is there and is no trace");
    if (traceline::isMaskedHead(head) != isMasked)
        return isMasked ? tr("is there and is a full trace, which a masked one cannot be added to")
                        : tr("is there and is a masked trace, which a full one cannot be added to");
    file.seek(file.size() - 1);
    m_hasOpenLine = file.read(1) != "\n";
    return {};
}

QString TraceFile::open(const QString& name, bool isMasked)
{
    if (name == QStringLiteral("-"))
        return m_file.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered) ? QString()
                                                                                 : m_file.errorString();
    if (const QString reason = judge(name, isMasked); !reason.isEmpty())
        return reason;
    const QFileInfo there(name);
    // What is no file has no end to go to, and Qt complains when it is told to.
    const bool isFile = !there.exists() || there.isFile();
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    m_file.setFileName(name);
    if (!m_file.open(isFile ? mode | QIODevice::Append : mode))
        return m_file.errorString();
    if (m_hasOpenLine)
        append("\n");
    return {};
}

void TraceFile::append(const QByteArray& line)
{
    if (!m_file.isOpen() || m_file.write(line) == line.size())
        return;
    const QString reason = m_file.errorString();
    m_file.close();
    if (m_lossListener)
        m_lossListener(reason);
}

} // namespace trace
