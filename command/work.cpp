#include "work.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

namespace qel::SectrixCommand {
namespace {

/// The threads and what they have finished.
class Workers {
public:
    Workers(std::size_t count, std::size_t jobs, std::function<Outcome(std::size_t)> const& work)
        : m_work(work), m_slots(count), m_lead(4 * std::min(jobs, count)) {
        for (std::size_t i = 0; i < std::min(jobs, count); ++i)
            try {
                m_threads.emplace_back([this] { Run(); });
            } catch (std::system_error const&) { // the system gives no more, so those there are do it
                if (m_threads.empty())
                    throw;
                break;
            }
    }
    Workers(Workers const&) = delete;
    Workers& operator=(Workers const&) = delete;
    ~Workers() {
        {
            std::lock_guard const lock(m_mutex);
            m_next = m_slots.size();
        }
        m_changed.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    /// Waits for the next in order. \throws what its work has thrown.
    Outcome Take() {
        std::unique_lock lock(m_mutex);
        Slot& slot = m_slots[m_taken];
        m_changed.wait(lock, [&] { return slot.m_outcome || slot.m_failure; });
        ++m_taken;
        m_changed.notify_all();
        if (slot.m_failure)
            std::rethrow_exception(slot.m_failure);
        Outcome outcome = std::move(*slot.m_outcome);
        slot.m_outcome.emplace(); // gives its memory back
        return outcome;
    }

private:
    struct Slot {
        std::optional<Outcome> m_outcome;
        std::exception_ptr m_failure;
    };

    void Run() noexcept {
        std::unique_lock lock(m_mutex);
        for (;;) {
            // What is finished waits in memory until it is taken, so nobody runs far ahead.
            m_changed.wait(lock, [&] { return m_next >= m_slots.size() || m_next < m_taken + m_lead; });
            if (m_next >= m_slots.size())
                return;
            std::size_t const place = m_next++;
            lock.unlock();
            Slot slot;
            try {
                slot.m_outcome = m_work(place);
            } catch (...) {
                slot.m_failure = std::current_exception();
            }
            lock.lock();
            m_slots[place] = std::move(slot);
            m_changed.notify_all();
        }
    }

    std::function<Outcome(std::size_t)> const& m_work;
    std::vector<Slot> m_slots;
    /// How many may be begun beyond those that were taken.
    std::size_t m_lead;
    std::vector<std::thread> m_threads;
    /// Guards all that follows, and the slots.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    /// The next to be begun.
    std::size_t m_next = 0;
    /// How many were taken.
    std::size_t m_taken = 0;
};

} // namespace

void Outcome::Add(std::string trouble, int status) {
    m_troubles.push_back(std::move(trouble));
    m_status = std::max(m_status, status);
}

void WorkInOrder(std::size_t count, std::size_t jobs, std::function<Outcome(std::size_t)> const& work,
                 std::function<void(Outcome&)> const& take) {
    Workers workers(count, jobs, work);
    for (std::size_t i = 0; i < count; ++i) {
        Outcome outcome = workers.Take();
        take(outcome);
    }
}

} // namespace qel::SectrixCommand
