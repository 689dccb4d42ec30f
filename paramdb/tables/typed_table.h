// A table: a container of rows with a tag.
#pragma once

#include <paramdb/tables/table_interface.h>
#include <paramdb/tables/table_rows.h>

// The tag names the table in a lake, a table set and a sea alike.
class CQParamBaseTable {
public:
    // The tag is static text.
    explicit CQParamBaseTable(wchar_t const* tag) : m_tag(tag) {}
    CQParamBaseTable(CQParamBaseTable const&) = delete;
    CQParamBaseTable& operator=(CQParamBaseTable const&) = delete;
    virtual ~CQParamBaseTable() = default;

    wchar_t const* tag() const { return m_tag; }

private:
    wchar_t const* m_tag;
};

// T is one of the containers; what it offers for reading, the table offers.
template <class T>
class CQParamTypedTable : public CQParamBaseTable,
                          public T,
                          public CQParamTableRows,
                          public virtual CQParamBaseTableInterface {
public:
    using typename T::key_type;
    using typename T::mapped_type;

    explicit CQParamTypedTable(wchar_t const* tag) : CQParamBaseTable(tag) {}

    void Clear() override { DestroyRows(); }
    void PurgeTable() override { DestroyRows(); }
    void DumpTable(int limit) override { paramdb::DumpRows(*this, tag(), limit); }

    std::size_t RowCount() const override { return this->size(); }
    void VisitRows(Visitor const& visitor) const override {
        for (auto const& [key, row] : *this)
            if (!visitor(paramdb::ConstFields(key), paramdb::ConstFields(row)))
                return;
    }
    std::size_t ContainerBytes() const override {
        constexpr std::size_t tree_links = 4 * sizeof(void*);
        if constexpr (requires { this->capacity(); })
            return this->capacity() * sizeof(typename T::value_type);
        else
            return this->size() * (sizeof(typename T::value_type) + tree_links);
    }

protected:
    // Called whenever all rows go; the memory of a vector stays for the next load.
    virtual void DestroyRows() { T::clear(); }
};
