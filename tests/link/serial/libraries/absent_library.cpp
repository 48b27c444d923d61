// The library that another one under test needs and does not find.

extern "C" int kv408_absent();

extern "C" int kv408_absent() {
    return 408;
}
