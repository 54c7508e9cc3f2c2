# Compiler warnings are errors.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
