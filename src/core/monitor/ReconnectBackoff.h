#pragma once

// Waits between reconnect attempts: 1 s, doubling on every failure, at most 60 s.
class ReconnectBackoff
{
public:
    explicit ReconnectBackoff(int initialMs = 1000, int maxMs = 60000) : m_initial(initialMs), m_max(maxMs) {}

    // The wait before the next attempt; each call doubles the one after it.
    int nextDelayMs()
    {
        const int delay = m_next;
        m_next = m_next > m_max / 2 ? m_max : m_next * 2;
        return delay;
    }
    int peekDelayMs() const { return m_next; }
    void reset() { m_next = m_initial; }

private:
    int m_initial;
    int m_max;
    int m_next = m_initial;
};
