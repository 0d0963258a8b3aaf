#include "update/update_failures.h"

namespace lexiquill {

QString displayText(SharedDirectory::Problem problem) {
    switch (problem) {
    case SharedDirectory::Problem::NoSpace:
        return QStringLiteral("磁盘空间不足");
    case SharedDirectory::Problem::NoPermission:
        return QStringLiteral("没有写入权限");
    case SharedDirectory::Problem::NoDirectory:
        return QStringLiteral("目录不存在");
    case SharedDirectory::Problem::NameTaken:
        return QStringLiteral("同名文件已存在");
    case SharedDirectory::Problem::OtherOwner:
        return QStringLiteral("同名文件属于其他用户");
    case SharedDirectory::Problem::Unsafe:
        return QStringLiteral("目录不安全");
    case SharedDirectory::Problem::ProgramForbidden:
        return QStringLiteral("目录中不允许运行程序");
    case SharedDirectory::Problem::Other:
        break;
    }
    return QStringLiteral("文件系统错误");
}

QString displayText(ReplacementObstacle obstacle) {
    switch (obstacle) {
    case ReplacementObstacle::UnreadableName:
        return QStringLiteral("安装位置的名称无法识别");
    case ReplacementObstacle::NoUnpacker:
        return QStringLiteral("缺少解压程序 unzip");
    case ReplacementObstacle::NotWritable:
        break;
    }
    return QStringLiteral("安装位置不可写");
}

} // namespace lexiquill
