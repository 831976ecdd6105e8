// What every program linked to the library pays before it does anything.
int main() {}
