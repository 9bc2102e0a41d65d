const parts = ['bracket', 'housing', 'helical_gear', 'flange', 'cover'];
const statuses = { success: 2, failed: 3, cancelled: 6 } as const;
const timeText = (seconds: number): string => new Date(seconds * 1000).toISOString().replace('.000', '');

function statusOf(number: number): number {
  if (number % 17 === 0) return statuses.failed;
  return number % 29 === 0 ? statuses.cancelled : statuses.success;
}

function row(number: number, queuedTime: number): object {
  const scenario = { id: '1', relativePath: 'mesh_report.rb', path: '/scenarios/mesh_report.rb', displayName: 'mesh_report' };
  return {
    id: `e${number}`,
    seqId: number,
    progress: 100,
    status: statusOf(number),
    outputDir: `/output/part_${number}`,
    workDir: '',
    startTime: timeText(queuedTime + 10),
    endTime: timeText(queuedTime + 70),
    scenario,
    inputFiles: [`/parts/${parts[number % parts.length]}_${number}.stl`],
    runArgument: '',
    extraText: '',
    queuedTime,
  };
}

/** The job list of a host that has run `count` jobs, the same for each call. */
export function jobListOf(count: number): string {
  const begin = 1_770_000_000;
  return JSON.stringify({ JobList: Array.from({ length: count }, (_none, index) => row(index + 1, begin + index * 20)) });
}
