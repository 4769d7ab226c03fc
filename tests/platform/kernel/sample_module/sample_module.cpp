// A shared object that the module tests load.
extern "C" {

[[gnu::visibility("default")]] long SampleAnswer();
long SampleHidden();

long SampleAnswer() {
  return SampleHidden() + 1;
}

long SampleHidden() {
  return 6;
}

}  // extern "C"
