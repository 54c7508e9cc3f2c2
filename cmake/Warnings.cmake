# Every compiler message is a fault of ours.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
