// A table that fills itself from a lake, a table set or a sea, and writes itself to a sea.
#pragma once

#include <paramdb/tables/row_sources.h>
#include <paramdb/tables/typed_table.h>
#include <paramdb/tables/unique_tree_map.h>
#include <paramdb/tables/unique_vector_map.h>

#include <algorithm>
#include <array>
#include <utility>

template <class T>
class CQParamSeaTypedTable : public CQParamTypedTable<T>, public CQParamSeaTable {
    using Table = CQParamTypedTable<T>;

public:
    using typename Table::key_type;
    using typename Table::mapped_type;

    // The sea is the table's local one; see CQParamSeaTable.
    explicit CQParamSeaTypedTable(wchar_t const* tag, CResourceSea* sea = nullptr)
        : Table(tag), CQParamSeaTable(sea) {}

    void Clear() override {
        this->DestroyRows();
        ForgetLocalSea();
    }

    bool ReadTable(CResourceSea* sea) override {
        this->DestroyRows();
        if (sea == nullptr || !sea->IsListEntry(this->tag()))
            sea = LocalSea();
        if (sea == nullptr || !sea->IsListEntry(this->tag()))
            return false;
        return Fill(paramdb::RowsOf(*sea, this->tag()));
    }

    bool ReadTable(ParamDb::CDbTableSet& set) override {
        this->DestroyRows();
        auto const table = set.find(this->tag());
        if (table == set.end())
            return this->ReadTable(nullptr);
        return Fill(paramdb::RowsOf(table->second, this->tag()));
    }

    bool ReadTable(CLake& lake) override {
        this->DestroyRows();
        auto const node = lake[this->tag()];
        if (!node.found())
            return this->ReadTable(nullptr);
        if (!node.position->is_section())
            return false;
        if constexpr (IsVector)
            if (std::size_t const rows = node.position->unnamed_size(); rows > this->capacity())
                this->reserve(rows);
        return Fill(paramdb::RowsOf(*node.position, this->tag()));
    }

    bool WriteTable(CResourceSea* sea) override {
        if (sea == nullptr)
            sea = LocalSea();
        if (sea != nullptr)
            paramdb::WriteRows(*this, *sea, this->tag());
        return sea != nullptr;
    }

protected:
    // Called for each row that has come into a tree, in the order of reading.
    virtual void RowAdded(typename T::const_iterator) {}

private:
    static constexpr bool IsVector = requires(T & container) { container.reserve(0); };
    static constexpr bool IsTree = requires(T & container) { container.try_emplace(key_type()); };

    bool Fill(paramdb::RowReader const& read_rows) {
        key_type key;
        mapped_type row;
        std::array<paramdb::Field, paramdb::FieldCount<key_type> + paramdb::FieldCount<mapped_type>> fields;
        std::ranges::copy(paramdb::Fields(row), std::ranges::copy(paramdb::Fields(key), fields.begin()).out);
        paramdb::ReserveTexts(fields);
        if constexpr (IsVector) {
            typename T::Filler filler(*this);
            bool const all_good = read_rows(fields, [&] { filler.Add(key, row); });
            filler.Finish();
            return all_good;
        } else {
            return read_rows(fields, [&] { Insert(key, row); });
        }
    }

    void Insert(key_type const& key, mapped_type const& row) {
        if constexpr (IsTree) {
            std::size_t const before = this->size();
            auto const position = this->try_emplace(this->end(), key, row);
            if (this->size() > before)
                RowAdded(position);
        } else {
            this->insert({key, row});
        }
    }
};
