#compdef updatekey
# Completion of updatekey for zsh. scripts/lib/check-completion compares its words with the help.
_updatekey() {
    local -a commands check
    local state line
    commands=(
        'make:Make an update key from its files'
        'check:Report the faults of a key'
        'info:Show the content of a key'
        'image:Make a disk image of a key'
        'sticks:List the USB sticks'
        'write:Write a key to USB sticks'
        'diff:Compare a key with another key or a device'
        'rehearse:Run the real updater on a copy of a device'
        'diagnose:Report what is wrong with a returned instrument'
    )
    check=(
        '--flash-size[size of the flash disk]:size:'
        '--languages[languages that the key must support]:languages:'
        '--machine[processor of the application]:processor:(arm x86 x64 any)'
        '--accept[findings to ignore]:codes:'
    )
    _arguments -C '--help[show the help]' '--help-all[show the help of all commands]' \
        '--version[show the version]' '--json[write JSON]' '--quiet[write only what needs attention]' \
        '1:command:->command' '*::argument:->argument'
    [[ $state == command ]] && _describe command commands
    case $line[1] in
        make) _arguments '--app[files of the application]:folder:_files -/' \
            '--gui[GUI data]:folder:_files -/' '--notes[release notes]:file:_files' \
            '--version[version of the update]:version:' $check '*:folder:_files -/' ;;
        image) _arguments '--size[size of the image]:size:' \
            '--no-partition-table[only a file system]' $check '*:file:_files' ;;
        write) _arguments '--replace[replace an earlier update]' '--eject[unmount good sticks]' \
            '--not-a-stick[write to any folder]' $check '*:file:_files' ;;
        rehearse) _arguments '--device[device folder]:folder:_files -/' \
            '--updater[the updater]:file:_files' '--keep[new folder for the updated device]:file:_files' \
            '--timeout[seconds]:seconds:' '--hidden[use a virtual screen]' $check '*:file:_files' ;;
        diagnose) _arguments '--manifest[key to compare with]:file:_files' $check[2] $check[3] \
            '*:file:_files' ;;
        check) _arguments $check '*:file:_files' ;;
        info | diff) _arguments '*:file:_files' ;;
    esac
}
_updatekey "$@"
