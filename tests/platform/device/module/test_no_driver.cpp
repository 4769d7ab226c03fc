// A shared object that is no driver.
extern "C" __attribute__((visibility("default"))) int Unrelated() {
  return 0;
}
