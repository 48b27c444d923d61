// A library under test that needs another one.

extern "C" int kv408_absent();
extern "C" int kv408_needy();

extern "C" int kv408_needy() {
    return kv408_absent();
}
