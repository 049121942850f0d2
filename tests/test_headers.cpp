// The program whose precompiled headers the test programs share; nobody runs it.
int main() {
  return 0;
}
