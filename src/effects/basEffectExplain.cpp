#include "effects/basEffectExplain.h"

#include <initializer_list>

namespace basEffectExplain {

namespace {

const QString CrLf = QStringLiteral("\r\n");

struct Entry
{
    std::initializer_list<const char16_t *> lines; // title, syntax and explanation
    const char16_t *example;
};

// The argument lines stand indented under their title.
// clang-format off
const Entry &entry(int index)
{
    static const Entry entries[EntryCount] = {
        {{uR"x(渐变: {\t([<t1>,<t2>,] [<accel>,]<style modifiers>)})x",
          uR"x(    t1: 渐变开始时间的偏移量(毫秒)(可选))x",
          uR"x(    t2: 渐变结束时间的偏移量(毫秒)(可选))x",
          uR"x(    accel: 加速度，大于1加速，0-1减速(可选))x",
          uR"x(    style modifiers: 渐变应用的效果，对\fad, \fade, \pos，\move无效)x",
          uR"x(    t1,t2省略或者为0时,使用句子的整个显示时间来渐变)x"},
         uR"x({\t(0,3000,2,\1a&Hff&)}云帆字幕组)x"},
        {{uR"x(换行符: 大写\N)x", uR"x(    小写\n在换行方式为1时无效)x"}, uR"x(云帆\N字幕组)x"},
        {{uR"x(文字颜色: {\c&H<bbggrr>&})x",
          uR"x(          {\1c&H<bbggrr>&})x",
          uR"x(          {\2c&H<bbggrr>&})x",
          uR"x(          {\3c&H<bbggrr>&})x",
          uR"x(          {\4c&H<bbggrr>&})x",
          uR"x(          {\alpha&<Haa>&})x",
          uR"x(          {\1a&<Haa>&})x",
          uR"x(          {\2a&<Haa>&})x",
          uR"x(          {\3a&<Haa>&})x",
          uR"x(          {\4a&<Haa>&})x",
          uR"x(    bb: 蓝色的16进制值(00-FF))x",
          uR"x(    gg: 绿色的16进制值(00-FF))x",
          uR"x(    rr: 红色的16进制值(00-FF))x",
          uR"x(    aa: 透明度16进制值(00-FF)，越大透明度越高)x",
          uR"x(    c: 第一颜色)x",
          uR"x(    1c: 第一颜色)x",
          uR"x(    2c: 第二颜色)x",
          uR"x(    3c: 边框颜色)x",
          uR"x(    4c: 背景颜色)x",
          uR"x(    alpha: 全部颜色的透明度)x",
          uR"x(    1a: 第一颜色透明度)x",
          uR"x(    2a: 第二颜色透明度)x",
          uR"x(    3a: 边框颜色透明度)x",
          uR"x(    4a: 背景颜色透明度)x"},
         uR"x({\c&H0000FF&}云帆{\1a&HF0&}字幕组)x"},
        {{uR"x(字体: {\fn<font name>})x", uR"x(    font name: 字体名字)x"}, uR"x(云帆{\fn楷体}字幕组)x"},
        {{uR"x(字体大小: {\fn<font size>})x", uR"x(    font size: 字体大小)x"}, uR"x(云帆{\fs25}字幕组)x"},
        {{uR"x(粗体: {\b1}和{\b0})x", uR"x(    1: 设置粗体)x", uR"x(    0: 取消粗体)x"}, uR"x(云帆{\b1}字幕组)x"},
        {{uR"x(斜体: {\i1}和{\i0})x", uR"x(    1: 设置斜体)x", uR"x(    0: 取消斜体)x"}, uR"x(云帆{\i1}字幕组)x"},
        {{uR"x(下划线: {\u1}和{\u0})x", uR"x(    1: 设置下划线)x", uR"x(    0: 取消下划线)x"},
         uR"x(云帆{\u1}字幕组)x"},
        {{uR"x(中划线: {\s1}和{\s0})x", uR"x(    1: 设置中划线)x", uR"x(    0: 取消中划线)x"},
         uR"x(云帆{\s1}字幕组)x"},
        {{uR"x(对齐方式: {\an<alignment>})x",
          uR"x(          {\a<alignment>})x",
          uR"x(    an时:7-8-9)x",
          uR"x(         4-5-6)x",
          uR"x(         1-2-3)x",
          uR"x(    a 时:5-6-7)x",
          uR"x(         9-10-11)x",
          uR"x(    一句中只有第一个有效)x"},
         uR"x(云帆{\an5>字幕组)x"},
        {{uR"x(边界弱化: {\be1}和{\be0})x", uR"x(    1: 设置边界弱化)x", uR"x(    0: 取消边界弱化)x"},
         uR"x(云帆{\be1}字幕组)x"},
        {{uR"x(影子: {\shad<depth>})x", uR"x(    depth: 影子宽度)x"}, uR"x(云帆{\shad3}字幕组)x"},
        {{uR"x(边框: {\bord<width>})x", uR"x(    width: 边框宽度)x"}, uR"x(云帆{\bord2}字幕组)x"},
        {{uR"x(间距: {\fsp<pixels>})x", uR"x(    pixels: 间距宽度)x"}, uR"x(云帆{\fsp20}字幕组)x"},
        {{uR"x(旋转: {\fr[<x/y/z>]<degrees>})x",
          uR"x(    x: 绕X轴旋转(前后翻转,180度为倒立))x",
          uR"x(    y: 绕Y轴旋转(左右翻转,180度为镜面翻转))x",
          uR"x(    z: 绕Z轴旋转(钟面逆时针翻转,180度为倒立))x",
          uR"x(    degrees: 旋转角度,可以为负值反向旋转)x"},
         uR"x(云帆{\frx45}字幕组)x"},
        {{uR"x(伸缩: {\fsc<x or y><percent>})x",
          uR"x(    x: 宽度伸缩)x",
          uR"x(    y: 高度伸缩)x",
          uR"x(    percent: 伸缩的百分比)x"},
         uR"x(云帆{\fscx150}字幕组)x"},
        {{uR"x(淡入淡出: {\fade(<a1>, <a2>, <a3>, <t1>, <t2>, <t3>, <t4>})x",
          uR"x(          {\fad(<t5>, <t6>)})x",
          uR"x(    t1: 时间点偏移量1)x",
          uR"x(    t2: 时间点偏移量2)x",
          uR"x(    t3: 时间点偏移量3)x",
          uR"x(    t4: 时间点偏移量4)x",
          uR"x(    t5: 淡入的时间长度)x",
          uR"x(    t6: 淡出的时间长度)x",
          uR"x(    a1: 时间点1以前的透明度)x",
          uR"x(    a2: 时间点1到时间点2之间,透明度由a1变到a2;时间点2到时间点3之间,透明度保持a2)x",
          uR"x(    a2: 时间点3到时间点4之间,透明度由a2变到a3)x"},
         uR"x({\fade(255, 0, 255, 0, 5000, 10000, 15000}云帆字幕组)x"},
        {{uR"x(卡拉OK: {\k<duration>}或{\kf<duration>}或{\K<duration>}或{\ko<duration>})x",
          uR"x(    k: 整个文字一起变色)x",
          uR"x(    K: 每个文字内部渐变色)x",
          uR"x(    ko: 边框变色（未测试）)x",
          uR"x(    duration: 文字变色所用的时间)x"},
         uR"x(卡拉OK: {\K50}云{\K40}帆{\K30}字{\K20}幕{\K10}组)x"},
        {{uR"x(移动: {\move(<x1>, <y1>, <x2>, <y2>[, <t1>, <t2>])} )x",
          uR"x(    x1: 开始点X坐标)x",
          uR"x(    y1: 开始点Y坐标)x",
          uR"x(    x2: 结束点X坐标)x",
          uR"x(    y2: 结束点Y坐标)x",
          uR"x(    t1: 移动开始时间的偏移量(毫秒)(可选))x",
          uR"x(    t2: 移动结束时间的偏移量(毫秒)(可选))x"},
         uR"x(云帆{\move(100, 100, 200, 200, 1000, 5000])}字幕组 )x"},
        {{uR"x(指定缺省原点坐标，对旋转有效（未测试）: {\org(<x>, <y>)})x", uR"x(    x: X坐标)x", uR"x(    y: Y坐标)x"},
         uR"x(云帆{\org(100,100)}字幕组)x"},
        {{uR"x(直接指定字幕坐标: {\pos(<x>, <y>)})x",
          uR"x(    x: X坐标)x",
          uR"x(    y: Y坐标)x",
          uR"x(    一行中只有第一个有效)x"},
         uR"x(云帆{\pos(100,200)}字幕组)x"},
        {{uR"x(剪切掉设定范围外的所有效果（未测试）: {\clip(<x1>, <y1>, <x2>, <y2>)}或{\clip([<scale>,] <drawing commands>)})x",
          uR"x(    scale: 未测试)x",
          uR"x(    drawing commands: 未测试)x"},
         uR"x({\clip(100, 200,200, 300)}云帆字幕组)x"},
        {{uR"x(换行方式: {\q<num>})x",
          uR"x(    num: 1:自动换行, 上面一行较长)x",
          uR"x(    num: 2:自动换行, \n作为空格处理, \N换行)x",
          uR"x(    num: 3:不自动换行, 依靠\n \N来换行)x",
          uR"x(    num: 4:自动换行, 让下面一行更长)x"},
         uR"x({\q4}云帆字幕组)x"},
        {{uR"x(字符集: {\fe<charset>})x",
          uR"x(    charset: 字符集号码)x",
          uR"x(        简体中文:134)x",
          uR"x(        繁体中文:137)x",
          uR"x(        日文:128)x",
          uR"x(        英文:0)x",
          uR"x(        自动选择:1)x"},
         uR"x({\fe134}云帆字幕组)x"},
        {{uR"x(取消当前行的所有效果设定: {\r[<style>]})x", uR"x(    style: 其他的行效果设定代替当前的行效果设定(可选))x"},
         uR"x({\r}云帆字幕组)x"},
    };
    return entries[index];
}
// clang-format on

QString explanation(std::initializer_list<const char16_t *> lines)
{
    QString text = QStringLiteral("说明: ") + CrLf;
    for (const char16_t *line : lines)
        text += QString::fromUtf16(line) + CrLf;
    return text;
}

QString colourCyclePage()
{
    return explanation({
        u"效果: 从一种颜色变到另一种颜色，像波浪式的推进",
        u"文字列: 颜色渐变的显示文字",
        u"渐进: 颜色向前推进",
        u"渐退: 颜色向后推进",
        u"开始颜色: 渐变的开始颜色",
        u"结束颜色: 渐变的结束颜色",
        u"开始时间: 开始渐变的时间",
        u"结束时间: 结束渐变的时间",
        u"一个循环时间: 从开始颜色到结束颜色渐变一次用的时间",
        u"X坐标: 第一个字显示的X坐标",
        u"Y坐标: 第一个字显示的Y坐标",
        u"字间距: 每个字与前一个字的X坐标的偏移量",
        u"此项目制作途中",
    });
}

QString movePage()
{
    return explanation({
        u"效果: 根据给定坐标, 使用move语法产生移动效果",
        u"文字列: 需要移动的文字",
        u"开始X坐标: 第一个字移动的开始位置X坐标, 可以点击播放窗口自动取得坐标  ",
        u"开始Y坐标: 第一个字移动的开始位置Y坐标, 可以点击播放窗口自动取得坐标  ",
        u"结束X坐标: 第一个字移动的结束位置X坐标, 可以点击播放窗口自动取得坐标  ",
        u"结束Y坐标: 第一个字移动的结束位置Y坐标, 可以点击播放窗口自动取得坐标  ",
        u"水平字间距: 每两个字的开始和结束坐标的水平间距, 可以在播放窗口中拖动鼠标自动取得长度  ",
        u"垂直字间距: 每两个字的开始和结束坐标的垂直间距, 可以在播放窗口中拖动鼠标自动取得长度  ",
        u"开始时间偏移: 开始移动时间与整体时间轴之间的时间差 ",
        u"结束时间偏移: 结束移动时间与整体时间轴之间的时间差 ",
        u"结束时间偏移和结束时间偏移全为0时move句将省略时间参数  ",
        u"淡入淡出范围选择: 用fade语法淡入淡出 ",
        u"    在滑块上淡入结束的位置按下鼠标, 拖动到淡出开始的位置放开",
        u"    选中的范围显示为蓝色, 在这段时间内文字完全显示",
        u"    没有选择范围时不产生淡入淡出效果",
        u"全长度x秒请输入整行的时间轴长度，将由此计算fade的时间轴偏移量 ",
        u"例子: 在480线的画面上从下往上滚动显示一段通知",
        u"    1. 文字列: 输入通知的文字",
        u"    2. 开始X坐标: 30, 开始Y坐标: 450",
        u"    3. 结束X坐标: 30, 结束Y坐标: 50",
        u"    4. 水平字间距: 0, 垂直字间距: 0",
        u"    5. 开始时间偏移: 0, 结束时间偏移: 0",
        u"    6. 淡入淡出范围选择: 从20拖动到80",
        u"    7. 全长度: 10秒, 按生成按钮",
        u"    8. 在时间轴差分页面, 生成行数22, 第1行0:00:05.00到0:00:15.00, 第2行0:00:06.00到0:00:16.00, "
        u"按生成按钮",
        u"    9. 把生成的时间轴和移动效果分别拷贝到时间轴窗口中",
    });
}

QString drawingPage()
{
    return explanation({
        u"效果: 用SSA语句画图",
        u"坐标比列尺: 建议不要改变缺省值1",
        u"Y轴偏移量: 往上小于0，往下大于0，",
        u"坐标列表: 直接输入坐标，或者点击播放窗口自动取得坐标",
        u"画直线",
        u"    从坐标1画到坐标2,在从坐标2画到坐标3...",
        u"画３次Bezier曲线",
        u"    由坐标1,２,３,４画第一条曲线，再由４,５,６,７画第二条曲线...",
        u"画３次B-Spline曲线",
        u"    由坐标1,２画第一条曲线，再由２,３7画第二条曲线...",
        u"此项目未完成，请勿使用",
    });
}

QString timeDifferencePage()
{
    return explanation({
        u"效果: 根据输入的时间点，产生差分时间轴",
        u"配合其他需要差分时间轴的效果",
        u"使用方法: ",
        u"1,2行差分: 每个时间点与前一个时间点的间距等于1,2行的间距 ",
        u"    需要输入第1,2行的时间点 ",
        u"头尾行差分: 平分第一行和最后一行的时间点 ",
        u"    需要输入第1,最后行(生成行数)的时间点 ",
        u"输入时间点可以使用插入时间点快捷键自动取得播放器的当前时间 ",
        u"生成后用Ctrl+C,Ctrl+V拷贝到时间轴窗口中 ",
    });
}

QString positionStepsPage()
{
    return explanation({
        u"效果: 用pos语法定位",
        u"文字列: 需要定位的文字",
        u"开始X坐标: 第一个字的X坐标",
        u"开始Y坐标: 第一个字的Y坐标",
        u"X间距: 每个字的X轴间距",
        u"Y间距: 每个字的Y轴间距",
        u"使用方法: ",
        u"    1. 输入需要定位的文字",
        u"    2. 输入开始X坐标和开始Y坐标, 或者点击坐标输入框后再点击播放窗口自动取得坐标",
        u"    3. 点击X间距输入框后, 在播放窗口中按住左键拖动鼠标自动取得X间距",
        u"    4. 点击Y间距输入框后, 在播放窗口中按住左键拖动鼠标自动取得Y间距",
        u"    5. 按\"生成\"按钮",
    });
}

QString karaokePage()
{
    return explanation({
        uR"x(效果: 使用渐变效果符号"\r"加强卡拉OK效果)x",
        u"卡拉OK: 已生成的卡拉OK效果文字",
        u"效果符号: 增加的效果",
        u"使用方法: ",
        u"1. 输入已完成的卡拉OK效果文字",
        u"2. 输入SSA格式的效果符号, 比如颜色, 透明度等",
        u"3. 按\"生成\"按钮",
    });
}

} // namespace

QString ExplainEntry(int index)
{
    if (index < 0 || index >= EntryCount)
        return {};
    const Entry &e = entry(index);
    return explanation(e.lines) + QStringLiteral("例子: ") + CrLf + QString::fromUtf16(e.example);
}

QString ExplainTag(int tab)
{
    return ExplainEntry(tab + 1);
}

QString ExplainPage(int page, int tab)
{
    switch (page) {
    case 0:
        return ExplainTag(tab);
    case 1:
        return drawingPage();
    case 2:
        return karaokePage();
    case 3:
        return timeDifferencePage();
    case 4:
        return colourCyclePage();
    case 6:
        return movePage();
    case 7:
        return positionStepsPage();
    default:
        return {};
    }
}

QString MoveSampleText()
{
    return QStringLiteral("本字幕仅供学习交流之用，请勿用于任何商业用途");
}

} // namespace basEffectExplain
