#pragma once

#include <QtGlobal>

#include <map>

namespace http {

class Intake;

/// What the bodies that are being received take together. When it is full the largest of them loses its
/// place, so that a few that never come to an end keep nobody with a small one out.
class BodyRoom
{
public:
    explicit BodyRoom(qint64 size);

    /// False when this would be the largest itself.
    bool claim(Intake& intake, qint64 bytes);
    void release(const Intake& intake);
    qint64 taken() const { return m_taken; }

private:
    qint64 m_size;
    qint64 m_taken = 0;
    std::map<Intake*, qint64> m_held;
};

} // namespace http
