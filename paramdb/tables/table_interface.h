// What the table manager knows of a table, whatever its rows.
#pragma once

#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/storage/lake.h>

class CQParamBaseTableInterface {
public:
    virtual ~CQParamBaseTableInterface() = default;
    // Destroys all rows and forgets the local sea.
    virtual void Clear() = 0;
    // Destroys all rows and keeps the local sea.
    virtual void PurgeTable() = 0;
    // Outputs the rows to the protocol, limit + 1 of them at most, or all of them if the limit is 0 or
    // negative.
    virtual void DumpTable(int limit) = 0;
};

class CQParamSeaTable : public virtual CQParamBaseTableInterface {
public:
    // The sea is the table's own, read where a source lacks the table and written where no other sea is
    // given. It may be null, is not owned, and must outlive the table.
    explicit CQParamSeaTable(CResourceSea* sea = nullptr) : m_sea(sea) {}

    // Each read replaces the rows by those of the source and answers whether the table was found there and
    // every row was read without fault. Faults are reported row by row; reading goes on.
    virtual bool ReadTable(CResourceSea* sea) = 0;
    virtual bool ReadTable(ParamDb::CDbTableSet& set) = 0;
    virtual bool ReadTable(CLake& lake) = 0;
    // Writes the rows to the sea, or to the local one if it is null; false if there is neither.
    virtual bool WriteTable(CResourceSea* sea) = 0;

protected:
    CResourceSea* LocalSea() const { return m_sea; }
    void ForgetLocalSea() { m_sea = nullptr; }

private:
    CResourceSea* m_sea;
};
