// A shared object that the module tests load, and which the driver tests find to be no driver.
extern "C" {

long SampleHidden() {
  return 6;
}

[[gnu::visibility("default")]] long SampleAnswer() {
  return SampleHidden() + 1;
}

}  // extern "C"
