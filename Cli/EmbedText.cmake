# Writes OUTPUT, a C++ source that defines the text of the file INPUT.
file(READ "${INPUT}" text)
file(WRITE "${OUTPUT}" "#include \"Cli/ErrorsPage.h\"

const std::string_view Corvid::Cli::errorsPageText = R\"embedded(${text})embedded\";
")
