// What the leak sanitizer must not hold against these tests. Other builds never call it.
//
// SOCI 4.0 sends a statement of its own behind the login to PostgreSQL, and loses the connection where that
// fails: the tests of servers that fall silent or go away at that moment leak one each, in its code alone.
extern "C" char const* __lsan_default_suppressions() {
    return "leak:libsoci_postgresql\n";
}
