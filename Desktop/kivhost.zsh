#compdef kivhost
# Completion of kivhost for zsh. Formats and settings are what the program itself lists.

# The program of the command line, with the plug-in that it names.
_kivhost_ask()
{
    "${kivhost_program[@]}" "$@" 2>/dev/null
}

_kivhost_formats()
{
    local -a tags
    tags=(${(f)"$(_kivhost_ask formats | awk -F '\t' '{ print $3 ":" $1 }')"})
    _describe format tags
}

# NAME= of every setting, or what stands behind NAME= where it is one of a few words.
_kivhost_assignments()
{
    local -a names values
    local name
    if compset -P '*='; then
        name=${${IPREFIX%=}##*=}
        values=(${(f)"$(_kivhost_ask settings | sed -n "/^$name = /,/^[^ ]/{
            s/^    true or false;.*/true, false/
            t list
            s/^    one of \([^;(]*\).*/\1/
            t list
            b
            :list
            s/[ ;]*\$//
            s/, */\n/g
            p
        }")"})
        compadd -a values
        return
    fi
    names=(${(f)"$(_kivhost_ask settings | sed -n 's/^\([A-Za-z_0-9]*\) = .*/\1/p')"})
    compadd -S = -a names
}

_kivhost()
{
    local -a general source verbs
    local context state state_descr line
    typeset -A opt_args
    local -a kivhost_program=(${~words[1]})
    local -i at=${words[(i)--plugins*]}
    case ${words[at]} in
    --plugins) kivhost_program+=(--plugins ${(Q)words[at + 1]}) ;;
    --plugins=*) kivhost_program+=(${(Q)words[at]}) ;;
    esac
    general=('(- *)'{-h,--help}'[print a help]' '--plugins=[directory of the plug-in]:directory:_files -/')
    source=('*--set=[a setting for this run]:setting:_kivhost_assignments'
        '--settings=[settings file]:file:_files -g "*.ini"')
    verbs=('formats:list the export formats' 'info:tell what a marker holds'
        'svg:print the cut document' 'render:draw a marker or an exported file'
        'import:make a marker of a nesting instance' 'export:write a marker in other formats'
        'settings:list the settings')

    _arguments -C $general '(- *)--version[print the version]' \
        '1: :->verb' '*:: :->rest' && return
    if [[ $state == verb ]]; then
        _describe verb verbs
        _files -g '*.(mar|cut|dxf|ai|txt)'
        return
    fi
    case $words[1] in
    formats | settings)
        _arguments $general '--json[print JSON]'
        ;;
    info)
        _arguments $general $source '--cut[tell of the cuts]' '--json[print JSON]' \
            '1:marker:_files -g "*.mar"'
        ;;
    svg)
        _arguments $general $source '--fabric=[number of the fabric]:number' \
            '--for=[cutter]:cutter:(ansi eastman labels)' '--block=[number of the block]:number' \
            '1:marker:_files -g "*.mar"'
        ;;
    render)
        _arguments $general $source \
            '(-o --output)'{-o,--output=}'[picture to write]:picture:_files -g "*.(png|svg)"' \
            '--size=[size in pixels]:WIDTHxHEIGHT' '--fabric=[number of the fabric]:number' \
            '1:file:_files -g "*.(mar|cut|dxf|ai|txt)"'
        ;;
    import)
        _arguments $general '--layout=[layout of the instance]:file:_files -g "*.svg"' \
            '--unit=[centimetres for a unit]:centimetres' \
            '(-o --output)'{-o,--output=}'[marker to write]:marker:_files -g "*.mar"' \
            '1:instance:_files -g "*.json"'
        ;;
    export)
        _arguments $general $source '(--all)*--format=[format]:format:_kivhost_formats' \
            '(--format)--all[all formats]' \
            '(-o --output)'{-o,--output=}'[directory to write to]:directory:_files -/' \
            '--fields=[fields of the text file]:list' \
            '--field-separator=[between two fields]:text' \
            '--repeat-separator=[between entries of a field]:text' \
            '--one-line-per-size[a line for each size]' \
            '--not-optimised=[polygons that are not optimised]:answer:(continue stop)' \
            '--json[print JSON]' '1:marker:_files -g "*.mar"'
        ;;
    *)
        _files -g '*.(mar|cut|dxf|ai|txt)'
        ;;
    esac
}

_kivhost "$@"
