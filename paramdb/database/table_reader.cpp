#include <paramdb/database/report.h>
#include <paramdb/database/table_reader.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <exception>
#include <numeric>
#include <system_error>
#include <thread>

namespace paramdb::database {
namespace {

using ParamDb::row_t;

// Below this a second session takes longer than it saves.
constexpr std::uint64_t RowsForTwo = 20'000;

// Puts back the bits of the numbers that the columns did not keep.
void RestoreNumbers(SqlTable const& table, SpecialNumbers const& numbers, std::uint64_t row_number,
                    row_t& row, ColumnFaults& faults) {
    std::string key = KeyText(std::span(row).first(table.key_size));
    if (table.HasRowNumber())
        key += "/" + std::to_string(row_number);
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        auto const found = numbers.find({table.columns[column].name, key});
        if (found == numbers.end())
            continue;
        auto const bits = static_cast<std::uint64_t>(found->second);
        if (auto* const real = std::get_if<double>(&row[column]); real != nullptr && *real == 0)
            *real = std::bit_cast<double>(bits);
        else if (auto* const single = std::get_if<float>(&row[column]); single != nullptr && *single == 0)
            *single = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        else
            continue;
        std::erase_if(faults, [column](ColumnFault const& fault) {
            return fault.column == column && fault.fault == CellFault::Null;
        });
    }
}

void TellFaults(TableJob& job, row_t const& row, ColumnFaults const& faults) {
    std::string const key = KeyText(std::span(row).first(job.table->key_size));
    for (ColumnFault const& fault : faults) {
        SqlColumn const& column = job.table->columns[fault.column];
        job.faults.push_back(PlaceText(job.table->name, column.name, key) + FaultText(fault, column.type));
    }
}

void ReadTable(Session& session, std::int64_t revision_id, TableJob& job) {
    constexpr std::uint64_t most_reserved = 1 << 24; // a wrong count must not take all memory
    job.rows.reserve(static_cast<std::size_t>(std::min(job.expected_rows, most_reserved)));
    auto const reader = session.Read(*job.table, revision_id, job.expected_rows);
    std::uint64_t count = 0;
    ColumnFaults faults;
    while (reader->Next(job.rows.emplace_back(), faults)) {
        ++count;
        row_t& row = job.rows.back();
        if (job.numbers != nullptr)
            RestoreNumbers(*job.table, *job.numbers, count, row, faults);
        if (!faults.empty()) {
            TellFaults(job, row, faults);
            faults.clear();
            job.rows.pop_back();
        }
    }
    job.rows.pop_back();
    if (count != job.expected_rows)
        job.faults.push_back(PlaceText(job.table->name) + Count(count, "row") + " where the revision has " +
                             std::to_string(job.expected_rows));
}

// The jobs, largest first, for whoever has time.
class JobQueue {
public:
    explicit JobQueue(std::vector<TableJob>& jobs) {
        for (TableJob& job : jobs)
            m_jobs.push_back(&job);
        std::ranges::stable_sort(m_jobs, std::greater(),
                                 [](TableJob const* job) { return job->expected_rows; });
    }

    TableJob* Take() {
        std::size_t const next = m_next.fetch_add(1);
        return next < m_jobs.size() ? m_jobs[next] : nullptr;
    }
    void Stop() { m_next = m_jobs.size(); }

private:
    std::vector<TableJob*> m_jobs;
    std::atomic<std::size_t> m_next = 0;
};

void Work(Session& session, std::int64_t revision_id, JobQueue& queue) {
    try {
        while (TableJob* const job = queue.Take())
            ReadTable(session, revision_id, *job);
    } catch (...) {
        queue.Stop();
        throw;
    }
}

// A thread with a session of its own that takes part.
class Helper {
public:
    Helper(std::function<std::unique_ptr<Session>()> const& open, std::int64_t revision_id, JobQueue& queue) {
        try {
            m_thread = std::thread([this, &open, revision_id, &queue] { Run(open, revision_id, queue); });
        } catch (std::system_error const&) {
            // The system has no thread to give: the work is done without.
        }
    }
    Helper(Helper const&) = delete;
    Helper& operator=(Helper const&) = delete;
    ~Helper() { Join(); }

    // Throws what went wrong in the thread.
    void Finish() {
        Join();
        if (m_fault)
            std::rethrow_exception(m_fault);
    }

private:
    void Join() {
        if (m_thread.joinable())
            m_thread.join();
    }

    void Run(std::function<std::unique_ptr<Session>()> const& open, std::int64_t revision_id,
             JobQueue& queue) {
        std::unique_ptr<Session> session;
        try {
            session = open();
        } catch (DatabaseFault const&) {
            return; // one connection was to be had, not two
        }
        try {
            Transaction transaction(*session, Access::Read);
            Work(*session, revision_id, queue);
            transaction.Commit();
        } catch (...) {
            m_fault = std::current_exception();
        }
    }

    std::exception_ptr m_fault;
    std::thread m_thread;
};

} // namespace

void ReadTables(Session& session, std::int64_t revision_id,
                std::function<std::unique_ptr<Session>()> const& open_another, std::vector<TableJob>& jobs) {
    JobQueue queue(jobs);
    std::uint64_t rows = 0;
    for (TableJob const& job : jobs)
        rows += job.expected_rows;
    if (rows < RowsForTwo || std::thread::hardware_concurrency() < 2)
        return Work(session, revision_id, queue);
    Helper helper(open_another, revision_id, queue);
    Work(session, revision_id, queue);
    helper.Finish();
}

} // namespace paramdb::database
