PRAGMA writable_schema=1
DELETE FROM sqlite_master WHERE type='trigger'
