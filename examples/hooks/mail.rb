# frozen_string_literal: true

# Sends a mail about an event of the host. Usage: ruby mail.rb RECIPIENT [SENDMAIL]
recipient = ARGV.fetch(0)
sendmail = ARGV.fetch(1, "/usr/sbin/sendmail")

# A header is one line, whatever a file name contains.
subject = [ENV.fetch("CONTROLLER_EVENT"), *ENV.values_at("CONTROLLER_JOB_NUMBER", "CONTROLLER_JOB_STATUS")]
          .compact.join(" ").gsub(/[\r\n]/, " ")
facts = ENV.select { |name, _| name.start_with?("CONTROLLER_JOB_") }
           .map { |name, value| "#{name.delete_prefix('CONTROLLER_JOB_').downcase}: #{value}\n" }

# Without a shell: nothing in a name is a command.
IO.popen([sendmail, "-t"], "w") do |mail|
  mail.write("To: #{recipient}\nSubject: #{subject}\nContent-Type: text/plain; charset=UTF-8\n\n#{facts.join}")
end
exit($?.exitstatus || 1)
