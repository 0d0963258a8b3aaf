for program in lexiquill Lexiquill
    complete -c $program -f
    complete -c $program -n __fish_use_subcommand -a "search lookup s" -d 查询单词并记录到生词本
    complete -c $program -n __fish_use_subcommand -a "list ls" -d 列出所有搜索过的单词
    complete -c $program -n __fish_use_subcommand -a "plan weekly w" -d 查看本周到期复习清单
    complete -c $program -n __fish_use_subcommand -a "review r" -d 在终端快速对某单词打卡
    complete -c $program -n __fish_use_subcommand -a export -d '导出本周复习清单为 Markdown 文件'
    complete -c $program -n __fish_use_subcommand -a help -d 显示用法
end
