#include "prefs/BreakStyle.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace kelpa {

namespace {

// These texts are data of the program, not translated: each style speaks one language. A text stands on a
// line of its style's, in the order of the styles.
constexpr std::array<std::string_view, 3> breakPrompts = {
    "给你的眼睛一个小小的暂停，它们会感激你的关心。\n"
    "放松眼睛，让它们重新获得清晰和舒适。\n"
    "用手掌轻轻地遮住眼睛，给它们一个片刻的安宁。\n"
    "别忘了活动一下脖子，释放一下肩颈的紧张感。\n"
    "时不时地转动一下脖子，让肌肉得到放松。\n"
    "活动脖子，缓解长时间坐姿带来的不适。\n"
    "长时间低头工作后，抬头仰望一下，舒展一下脖子。\n"
    "长时间坐着，腰部容易变得僵硬，适时起身走动一下吧。\n"
    "给你的腰部一个小小的休息，稍微弯曲和伸展它。\n"
    "活动腰部，让它得到放松，减少长时间坐姿带来的不适。\n"
    "保持正确的坐姿，用椅子的靠背支撑腰部，避免过度疲劳。",

    "今天心情放假，工作也跟着轻松一下。\n"
    "世界那么大，工作那么小，今天就随意点吧。\n"
    "认真工作好累，今天就偷个懒吧。\n"
    "认真工作是好事，但今天我选择开开小差。\n"
    "今天我是自由自在的小懒猫，不想太认真。\n"
    "工作再认真，也得给自己点轻松的时间。\n"
    "慢慢来，工作不急，我要慢悠悠地躺着。\n"
    "工作是认真的，但今天我选择放个假。\n"
    "偷偷告诉你，今天的工作我只做了一半。\n"
    "谁说工作要认真，今天我要放松一下。",

    "精益求精，全力以赴，无愧于自己的努力。\n"
    "一丝不苟，恪尽职守，全心全意投入工作。\n"
    "脚踏实地，认真钻研，每一份努力都值得尊重。\n"
    "敬业拼搏，兢兢业业，把每一天都当作展示实力的机会。\n"
    "不懈追求卓越，不间断进取，只有努力才能铸就成功。\n"
    "工作是责任，也是荣誉，全神贯注，全情投入。\n"
    "不计较付出，只追求结果，每一步都决定着未来的高度。\n"
    "刻苦努力，认真琢磨，精益求精才能走向巅峰。\n"
    "每一个细节都值得重视，每一份工作都值得认真对待。\n"
    "严谨治事，用心经营，工作中的每一份认真都是成功的基石。"};

constexpr std::array<std::string_view, 3> greetings = {
    "一个新的清晨，又是新的开始。\n"
    "太阳升起，新的一天在等着你。\n"
    "早安！新的一天已经来临。\n"
    "新的一天，新的希望。\n"
    "今天是个崭新的开始。\n"
    "醒来的时候，新的一天已经到来。\n"
    "迎接新的一天，让它充满美好。\n"
    "时光流转，又是一个新的日子。\n"
    "新的一天，新的机会。\n"
    "新的一天，带着微笑迎接它吧。",

    "新的一天，但我还是想继续假装在睡觉。\n"
    "虽然是新的一天，但我的工作情绪还在昨天。\n"
    "新的一天，继续挣扎在工作的迷雾中。\n"
    "不想认真工作，就让我继续装成在思考人生。\n"
    "新的一天，新的拖延计划。\n"
    "不想认真工作，可以有无限的理由。\n"
    "新的一天，新的机会假装努力。\n"
    "工作？让我先喝杯咖啡，调整一下。\n"
    "新的一天，我还是选择继续假装努力。\n"
    "新的一天，但我还是有点懒。",

    "新的一天，新的开始，我要全力以赴，认真工作。\n"
    "每个新的早晨都是一个全新的机会，我会充满激情地去认真工作。\n"
    "新的一天，新的目标，我会用行动证明我的决心和努力。\n"
    "今天的太阳升起，带来新的机遇，我会抓住每个机会，认真工作。\n"
    "无论前路如何，我都会坚定地朝着目标前进，认真工作。\n"
    "新的一天，新的挑战，我会全力以赴，不留遗憾。\n"
    "每个新的一天都是为了更好的明天，我会认真努力，不放弃。\n"
    "不论风雨，我都会坚持，努力工作，创造美好的未来。\n"
    "新的一天，我会积极乐观地面对，用心去工作，迎接新的挑战。\n"
    "每天都是一个宝贵的礼物，我会充分利用每一天，认真工作，不虚度时光。"};

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        lines.emplace_back(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(lines.back().size() + 1, text.size()));
    }
    return lines;
}

} // namespace

std::string desc(BreakStyle style) {
    constexpr std::array names = {translatable("Default"), translatable("Relaxation"),
                                  translatable("Struggle")};
    return localized(names.at(static_cast<std::size_t>(style)));
}

std::vector<std::string> prompts(BreakStyle style) {
    return linesOf(breakPrompts.at(static_cast<std::size_t>(style)));
}

std::vector<std::string> newDayPrompts(BreakStyle style) {
    return linesOf(greetings.at(static_cast<std::size_t>(style)));
}

std::string newDayFallback() {
    return "今天, 我又来上班了 \n 这一次 \n属于我的鱼都要摸回来";
}

} // namespace kelpa
